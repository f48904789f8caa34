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

}  // namespace

std::vector<std::string> systemSourceRows() {
    std::vector<std::string> rows;
    if (model::isOneFile(model::FileKind::dataSources))
        return rows;
    const model::Configuration user = configurationOf(model::Scope::user);
    const model::Configuration system = configurationOf(model::Scope::system);
    for (const model::DataSource& source : system.dataSources()) {
        const auto own = user.dataSource(source.name);
        rows.push_back(withSystemMark(rowOf(source), own && own->header ? Shadowed::yes : Shadowed::no));
    }
    return rows;
}

std::vector<std::string> systemDriverRows() {
    std::vector<std::string> rows;
    if (model::isOneFile(model::FileKind::drivers))
        return rows;
    const model::Configuration user = configurationOf(model::Scope::user);
    const model::Configuration system = configurationOf(model::Scope::system);
    for (const model::Registered& driver : system.drivers()) {
        const auto& own = user.driver(driver.name);
        rows.push_back(withSystemMark(driver.name, own && own->header ? Shadowed::yes : Shadowed::no));
    }
    return rows;
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
