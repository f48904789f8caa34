// explain: from a name to its library, step by step.
#include <nlohmann/json.hpp>

#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/verb.h"
#include "odbcadmin/doctor/explanation.h"
#include "odbcadmin/doctor/unknown_name.h"
#include "odbcadmin/model/text.h"

namespace jx::cli {

namespace {

Json stepJson(const doctor::Step& step) {
    return {{"ok", step.ok},       {"subject", step.subject}, {"step", step.what},
            {"where", step.where}, {"value", step.value},     {"advice", step.advice}};
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
        session.print(model::printable(row[0]));
    }
    session.printTable(table);
}

ExitCode runExplain(const Session& session, const model::Configuration& configuration, const Line& line) {
    const std::string name = line.text("NAME");
    const std::vector<doctor::Step> steps = doctor::explain(configuration, name);
    if (steps.empty())
        return session.fail(doctor::whyUnknown(configuration, name));
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
    addVerb(app, session, "explain", "Show the way from a data source to its driver and its library",
            "odbcadmin explain Sales\nodbcadmin explain SQLite3")
        .operand("NAME", "Data source or driver", kOne, Complete::dsnOrDriver)
        .thisSystemOnly()
        .onRead(Needs::nothing, runExplain);
}

}  // namespace jx::cli
