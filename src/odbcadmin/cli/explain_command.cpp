// odbcadmin explain: from a name to its library, step by step.
#include <nlohmann/json.hpp>
#include "odbcadmin/cli/command_line.h"
#include "odbcadmin/cli/doctor_commands.h"

#include "odbcadmin/cli/near_matches.h"
#include "odbcadmin/cli/text.h"
#include "odbcadmin/doctor/explanation.h"

namespace jx::admin {

namespace {

Json stepJson(const doctor::Step& step) {
    Json object;
    object["ok"] = step.ok;
    object["subject"] = step.subject;
    object["step"] = step.what;
    object["where"] = step.where;
    object["value"] = step.value;
    object["advice"] = step.advice;
    return object;
}

void printSteps(const Session& session, const std::vector<doctor::Step>& steps) {
    std::vector<std::vector<std::string>> rows;
    for (const doctor::Step& step : steps) {
        const bool isFirst = rows.empty() || &step == &steps.front() || (&step)[-1].subject != step.subject;
        if (isFirst)
            rows.push_back({step.subject});
        rows.push_back({std::string(step.ok ? "  ok      " : "  broken  ") + step.what, step.value, step.where});
        if (!step.advice.empty())
            rows.push_back({"          " + step.advice});
    }
    // A line of its own says nothing of the columns' widths.
    std::vector<std::vector<std::string>> table;
    for (const auto& row : rows) {
        if (row.size() > 1) {
            table.push_back(row);
            continue;
        }
        session.printTable(table);
        table.clear();
        session.print(printable(row[0]));
    }
    session.printTable(table);
}

ExitCode runExplain(const Session& session, const std::string& name) {
    const doctor::Records records = doctor::readRecords();
    const std::vector<doctor::Step> steps = doctor::explain(records, name);
    if (steps.empty()) {
        std::vector<std::string> candidates = namesOf(records.dataSources);
        for (const std::string& driver : namesOf(records.drivers))
            candidates.push_back(driver);
        return session.fail(
            ExitCode::notFound,
            "There is no data source or driver " + name + " in " + records.odbcPath + " and " + records.odbcinstPath,
            adviceFor(name, candidates, "See odbcadmin dsn list and odbcadmin driver list."));
    }
    if (!session.json) {
        printSteps(session, steps);
        return ExitCode::done;
    }
    Json object;
    object["name"] = name;
    object["steps"] = Json::array();
    for (const doctor::Step& step : steps)
        object["steps"].push_back(stepJson(step));
    session.printJson(object);
    return ExitCode::done;
}

}  // namespace

void addExplain(CLI::App& app, Session& session) {
    CLI::App& verb = addVerb(app, "explain", "Show the way from a data source to its driver and its library",
                             "odbcadmin explain Sales\nodbcadmin explain SQLite3");
    const auto name =
        addOperands(verb, "NAME", "Data source or driver", {.least = 1, .most = 1, .complete = Complete::dsnOrDriver});
    onRun(verb, session, [name](Session& run) { return runExplain(run, operand(name, 0)); });
}

}  // namespace jx::admin
