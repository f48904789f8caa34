// Making the rows, and putting them into lists.
#include "odbcadmin/assist/system_rows.h"

#include <algorithm>

#include "odbcadmin/assist/chosen_source.h"
#include "odbcadmin/assist/forms.h"
#include "odbcadmin/assist/scope_mark.h"
#include "odbcadmin/assist/scoped_files.h"
#include "odbcadmin/model/system_files.h"

namespace jx::assist {

namespace {

// Those at the end of a list that have the mark.
std::vector<std::string> markedRows(const std::vector<std::string>& rows) {
    const auto isMarked = [](const std::string& row) { return withoutSystemMark(row).has_value(); };
    return {std::find_if(rows.begin(), rows.end(), isMarked), rows.end()};
}

// The rows of what the system's file has. rowsOf gets the user's configuration and the system's.
template <class RowsOf>
std::vector<std::string> rowsOfSystem(model::FileKind kind, RowsOf rowsOf) {
    if (model::isOneFile(kind))
        return {};
    return rowsOf(configurationOf(model::Scope::user), configurationOf(model::Scope::system));
}

// own: what the user has of the same name, if anything.
template <class Own>
std::string markedRow(const std::string& row, const Own& own) {
    return withSystemMark(row, own && own->header ? Shadowed::yes : Shadowed::no);
}

}  // namespace

std::vector<std::string> systemSourceRows() {
    return rowsOfSystem(model::FileKind::dataSources, [](const auto& user, const auto& system) {
        std::vector<std::string> rows;
        for (const model::DataSource& source : system.dataSources())
            rows.push_back(markedRow(rowOf(source), user.dataSource(source.name)));
        return rows;
    });
}

std::vector<std::string> systemDriverRows() {
    return rowsOfSystem(model::FileKind::drivers, [](const auto& user, const auto& system) {
        std::vector<std::string> rows;
        for (const model::Registered& driver : system.drivers())
            rows.push_back(markedRow(driver.name, user.driver(driver.name)));
        return rows;
    });
}

void putSystemRows(HWND dialog, unsigned short list, const std::vector<std::string>& rows) {
    const std::vector<std::string> present = rowsIn(dialog, list);
    const std::vector<std::string> marked = markedRows(present);
    if (marked == rows)
        return;
    for (std::size_t row = present.size(); row-- > present.size() - marked.size();)
        JXW_SendDlgItemMessage(dialog, list, LB_DELETESTRING, static_cast<int>(row), 0);
    for (const std::string& row : rows)
        addRow(dialog, list, row);
    if (present.size() == marked.size() && JXW_SendDlgItemMessage(dialog, list, LB_GETCURSEL, 0, 0) < 0)
        JXW_SendDlgItemMessage(dialog, list, LB_SETCURSEL, 0, 0);
}

}  // namespace jx::assist
