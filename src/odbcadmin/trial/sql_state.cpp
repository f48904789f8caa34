// The table of states.
#include "odbcadmin/trial/sql_state.h"

#include <algorithm>
#include <iterator>

namespace jx::trial {

namespace {

struct Row {
    std::string_view state;  // five characters, or two for a class
    StateMeaning meaning;
};

// Those of a connection, one by one; what statements answer with is told by class.
constexpr Row kStates[] = {
    {"01000", {"a remark of the driver", "Read its message; the connection is there."}},
    {"01S00", {"a keyword of the connection string is unknown", "Correct the keys of the data source."}},
    {"01S02", {"the driver took another value than the one asked for", "Look whether that value will do."}},
    {"08001", {"the driver could not reach the server", "Check host, port and network, and that the server runs."}},
    {"08002", {"the connection is in use already", "Report it to the driver's maker."}},
    {"08003", {"there is no connection", "Report it to the driver's maker."}},
    {"08004", {"the server rejected the connection", "Look into the server's log for its reason."}},
    {"08007", {"the connection failed during a transaction", "Check what became of the transaction."}},
    {"08S01", {"the connection to the server broke", "Check network, firewall and encryption settings."}},
    {"28000", {"user or password was refused", "Check user and password of the data source, and the server's rights."}},
    {"3D000", {"there is no such catalog", "Check the database name of the data source."}},
    {"3F000", {"there is no such schema", "Check the schema name of the data source."}},
    {"42000", {"syntax error or missing right", "Check that the user may use this database."}},
    {"42S02", {"there is no such table", "Check the database of the data source."}},
    {"HY000", {"an error of the driver without a state of its own", "Its message says what happened."}},
    {"HY001", {"memory was short", "Try again with more memory."}},
    {"HY010", {"functions were called in the wrong order", "Report it to the driver's maker."}},
    {"HY013", {"memory could not be used", "Try again with more memory."}},
    {"HY024", {"an attribute has a value that is not valid", "Check the values of the data source."}},
    {"HY090", {"a length is not valid", "Report it to the driver's maker."}},
    {"HY092", {"an option is not known", "Check the keys of the data source."}},
    {"HYC00", {"the driver does not offer this", "Ask for it in another way, or take a newer driver."}},
    {"HYT00", {"the time ran out", "Check the network, or allow more time."}},
    {"HYT01", {"the time for connecting ran out", "Check host, port and network, or allow more time."}},
    {"IM001", {"the driver has no such function", "Take a newer driver."}},
    {"IM002", {"the data source or its driver was not found", "See odbcadmin explain with its name."}},
    {"IM003", {"the driver could not be loaded", "See odbcadmin doctor with the data source's name."}},
    {"IM004", {"the driver could not make its environment", "Look for what it needs around it, such as variables."}},
    {"IM005", {"the driver could not make a connection object", "Report it to the driver's maker."}},
    {"IM006", {"the driver could not set a connection attribute", "Take a newer driver."}},
    {"IM007", {"no data source or driver was named", "Check the data source's section."}},
    {"IM008", {"a dialog failed", "Give user and password in the data source."}},
    {"IM009", {"the translator could not be loaded", "See odbcadmin translator list."}},
    {"IM010", {"the data source's name is too long", "Rename it to at most 32 bytes."}},
    {"IM011", {"the driver's name is too long", "Rename the driver."}},
    {"IM012", {"the DRIVER keyword is malformed", "Correct the connection string."}},
    {"IM014", {"driver and program are for different systems", "Install the driver for this system."}},
    {"S1000", {"an error of the driver without a state of its own", "Its message says what happened."}},
    {"S1001", {"memory was short", "Try again with more memory."}},
    {"S1C00", {"the driver does not offer this", "Ask for it in another way, or take a newer driver."}},
    {"S1T00", {"the time ran out", "Check the network, or allow more time."}},
};

constexpr Row kClasses[] = {
    {"00", {"success", "Nothing needs to be done."}},
    {"01", {"a warning", "Read its message."}},
    {"07", {"wrong use of parameters", "Its message says which."}},
    {"08", {"trouble with the connection", "Check host, port and network, and that the server runs."}},
    {"0A", {"the server does not offer this", "Ask for it in another way."}},
    {"21", {"wrong number of values", "Its message says where."}},
    {"22", {"a value does not fit its type", "Its message says which."}},
    {"23", {"a rule of the database was broken", "Its message says which."}},
    {"24", {"a cursor is in another state", "Report it to the driver's maker."}},
    {"25", {"a transaction is in another state", "End the transaction first."}},
    {"28", {"user or password was refused", "Check user and password of the data source."}},
    {"34", {"there is no such cursor", "Report it to the driver's maker."}},
    {"3C", {"a cursor's name stands twice", "Report it to the driver's maker."}},
    {"3D", {"there is no such catalog", "Check the database name of the data source."}},
    {"3F", {"there is no such schema", "Check the schema name of the data source."}},
    {"40", {"the transaction was rolled back", "Try it again."}},
    {"42", {"syntax error or missing right", "Check that the user may do this."}},
    {"44", {"a view's rule was broken", "Its message says which."}},
    {"HY", {"an error of the driver", "Its message says what happened."}},
    {"IM", {"trouble between program and driver", "See odbcadmin doctor."}},
    {"S0", {"a table, index or column is there already or is not", "Its message says which."}},
    {"S1", {"an error of the driver", "Its message says what happened."}},
};

template <std::size_t Size>
const Row* find(const Row (&rows)[Size], std::string_view state) {
    const Row* row =
        std::find_if(std::begin(rows), std::end(rows), [&](const Row& each) { return each.state == state; });
    return row == std::end(rows) ? nullptr : row;
}

}  // namespace

StateMeaning meaningOf(std::string_view state, Outcome outcome) {
    constexpr std::size_t kLength = 5;
    if (state.size() != kLength)
        return {"no state of the standard", "Its message says what happened."};
    if (outcome == Outcome::refused && state == "01000")
        return {"a remark of the driver", "Read its message; the cause may stand in it or in the next one."};
    if (const Row* row = find(kStates, state))
        return row->meaning;
    if (const Row* row = find(kClasses, state.substr(0, 2)))
        return row->meaning;
    return {"a state of the driver's own", "Look into the driver's manual."};
}

}  // namespace jx::trial
