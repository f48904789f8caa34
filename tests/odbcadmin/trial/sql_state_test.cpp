// What states mean.
#include "odbcadmin/trial/sql_state.h"

#include <gtest/gtest.h>

namespace jx::trial {
namespace {

TEST(SqlState, MeansWhatItsRowOrItsClassSays) {
    const struct {
        const char *state, *meaning, *advice;
    } rows[] = {
        {"08001", "the driver could not reach the server", "Check host, port and network, and that the server runs."},
        {"28000", "user or password was refused",
         "Check user and password of the data source, and the server's rights."},
        {"IM002", "the data source or its driver was not found", "See odbcadmin explain with its name."},
        {"01000", "a remark of the driver", "Read its message; the connection is there."},
        {"08999", "trouble with the connection", "Check host, port and network, and that the server runs."},
        {"HY999", "an error of the driver", "Its message says what happened."},
        {"S1999", "an error of the driver", "Its message says what happened."},
        {"S1C00", "the driver does not offer this", "Ask for it in another way, or take a newer driver."},
        {"00000", "success", "Nothing needs to be done."},
        {"XX999", "a state of the driver's own", "Look into the driver's manual."},
        {"hy000", "a state of the driver's own", "Look into the driver's manual."},
        {"", "no state of the standard", "Its message says what happened."},
        {"0", "no state of the standard", "Its message says what happened."},
        {"080011", "no state of the standard", "Its message says what happened."},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.state);
        EXPECT_STREQ(meaningOf(row.state, Outcome::connected).meaning, row.meaning);
        EXPECT_STREQ(meaningOf(row.state, Outcome::connected).advice, row.advice);
    }
}

TEST(SqlState, ARemarkOnAConnectionThatFailedIsNoSignOfOne) {
    EXPECT_STREQ(meaningOf("01000", Outcome::refused).advice,
                 "Read its message; the cause may stand in it or in the next one.");
    EXPECT_STREQ(meaningOf("08001", Outcome::refused).meaning, meaningOf("08001", Outcome::connected).meaning);
}

}  // namespace
}  // namespace jx::trial
