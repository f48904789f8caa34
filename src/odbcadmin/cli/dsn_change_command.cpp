// dsn add, ensure, set, unset and remove.
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <iterator>

#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/key_remarks.h"
#include "odbcadmin/cli/reference_options.h"
#include "odbcadmin/cli/scope_output.h"
#include "odbcadmin/cli/setup_route.h"
#include "odbcadmin/cli/verb.h"
#include "odbcadmin/model/connection_string.h"
#include "odbcadmin/model/data_source_change.h"
#include "odbcadmin/model/text.h"
#include "rules/names.h"

namespace jx::cli {

namespace {

using model::ChangeResult;
using model::Configuration;
using Action = trial::SetupRequest::Action;
using Remarks = std::vector<std::string>;

// What is given by name and options and thus not as KEY=VALUE.
const std::vector<std::string_view> kAttributesGivenOtherwise{"DSN", "Driver"};

constexpr std::chrono::seconds kSetupLimit{30};

// The change through the driver's setup library where that is the way and can be gone, else directly.
ChangeResult change(const Session& session, const std::optional<model::Registered>& driver, const Line& line,
                    const SetupWork& work, Remarks& remarks, const std::function<ChangeResult()>& directly) {
    const SetupRoute route = findRoute(session, driver, line.has("--direct"));
    if (!route.reason.empty())
        remarks.push_back(route.remark());
    if (!route.usable)
        return directly();
    auto result = goThroughSetup(session, *driver, work, remarks);
    return result ? std::move(*result) : directly();
}

// "[Sales] of /etc/odbc.ini:3" when the system's file has a section of that name beside the user's that was changed.
std::string besides(const Session& session, const std::string& name) {
    using model::Seen;
    if (session.system)
        return {};
    const Configuration system = Configuration::read({Seen::system, Seen::system});
    const auto source = system.dataSource(name);
    return source && source->header ? sectionText(source->header) : std::string();
}

// The registered driver that DRIVER of a connection string means: its name, or the path of its library.
std::string driverCalled(const Configuration& configuration, const std::string& text) {
    if (text.find('/') == std::string::npos)
        return text;
    for (const model::Registered& driver : configuration.drivers())
        if (driver.library.text == text)
            return driver.name;
    return text;
}

// Adds what a connection string says to the wish. Nothing after it said what is wrong: that is wrong use.
bool takeConnectionString(const Session& session, const Configuration& configuration, const std::string& text,
                          model::DataSourceWish& wish) {
    const auto refuse = [&](const std::string& fact, const char* advice) {
        session.fail(ExitCode::wrongUse, fact, advice);
        return false;
    };
    const model::ConnectionPairs read = model::readConnectionString(text);
    if (!read.error.empty())
        return refuse("The connection string cannot be read: " + read.error,
                      "Put a value with ; or { in braces: PWD={a;b}");
    for (const auto& [key, value] : read.pairs) {
        const bool isGiven =
            std::any_of(wish.attributes.begin(), wish.attributes.end(),
                        [&, &name = key](const auto& pair) { return rules::sameName(pair.first, name); });
        if (rules::sameName(key, "DSN") || rules::sameName(key, "FILEDSN") || rules::sameName(key, "SAVEFILE"))
            return refuse("The connection string holds " + key + ", which leads to keys that are kept elsewhere",
                          "Give one with DRIVER={...}, as dsn connstr prints it.");
        if (rules::sameName(key, rules::kDriver) ? !wish.driver.empty() : isGiven)
            return refuse(key + " is given twice", "Give it once, in the connection string or beside it.");
        if (rules::sameName(key, rules::kDriver))
            wish.driver = driverCalled(configuration, value);
        else
            wish.attributes.emplace_back(key, value);
    }
    return true;
}

// One line end at the end of the input is the shell's, not the value's.
std::string valueFromInput() {
    std::string value{std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>()};
    if (value.ends_with('\n'))
        value.pop_back();
    if (value.ends_with('\r'))
        value.pop_back();
    return value;
}

constexpr char kInterrupt = '\x03';

// Typed values are not shown while they are typed. Ctrl-C ends the line instead of the program, which would leave the
// terminal so.
class Unseen {
public:
    Unseen() {
        isTerminal_ = ::tcgetattr(STDIN_FILENO, &before_) == 0;
        termios hidden = before_;
        hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO | ISIG);
        hidden.c_cc[VEOL] = kInterrupt;
        if (isTerminal_)
            ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &hidden);
    }
    Unseen(const Unseen&) = delete;
    Unseen& operator=(const Unseen&) = delete;
    ~Unseen() {
        if (isTerminal_)
            ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &before_);
    }

private:
    termios before_{};
    bool isTerminal_ = false;
};

std::string typedValue(const std::string& key) {
    std::string value;
    std::cerr << "Value of " << model::printable(key) << ": " << std::flush;
    {
        const Unseen unseen;
        for (int letter = std::cin.get(); letter != '\n' && letter != std::char_traits<char>::eof();
             letter = letter == kInterrupt ? '\n' : std::cin.get())
            value.push_back(static_cast<char>(letter));
    }
    std::cerr << '\n';
    return value.ends_with(kInterrupt) ? "" : value;
}

// The places of KEYs without a value, of which --stdin gives one.
std::vector<std::size_t> bareKeysIn(const std::vector<std::string>& texts) {
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < texts.size(); ++i)
        if (texts[i].find('=') == std::string::npos)
            places.push_back(i);
    return places;
}

std::optional<model::Pairs> attributesOf(const Session& session, const Line& line) {
    std::vector<std::string> texts = line.texts("KEY=VALUE");
    if (!line.has("--stdin"))
        return takePairs(session, texts, kAttributesGivenOtherwise);
    const std::vector<std::size_t> bare = bareKeysIn(texts);
    if (bare.size() != 1) {
        session.fail(ExitCode::wrongUse, "--stdin takes one KEY without a VALUE",
                     "odbcadmin dsn set NAME KEY --stdin reads the value.");
        return std::nullopt;
    }
    std::string& key = texts[bare[0]];
    const std::string value = ::isatty(STDIN_FILENO) == 1 ? typedValue(key) : valueFromInput();
    if (value.empty() && !line.has("--allow-empty")) {
        session.fail(ExitCode::wrongUse, "Standard input gave no value for " + key + "; nothing was changed",
                     "Look at the command before the |; --allow-empty stores an empty value.");
        return std::nullopt;
    }
    key += "=" + value;
    return takePairs(session, texts, kAttributesGivenOtherwise);
}

std::optional<model::DataSourceWish> wishOf(const Session& session, const Line& line) {
    auto attributes = attributesOf(session, line);
    if (!attributes)
        return std::nullopt;
    return model::DataSourceWish{line.text("NAME"), line.text("--driver"), std::move(*attributes)};
}

ExitCode addDataSource(const Session& session, const Configuration& configuration, const Line& line) {
    auto wish = wishOf(session, line);
    const auto limit = timeLimit(session, line, kSetupLimit);
    if (!wish || !limit || !takeConnectionString(session, configuration, line.text("--connstr"), *wish))
        return ExitCode::wrongUse;
    if (wish->driver.empty())
        return session.fail(ExitCode::wrongUse,
                            line.has("--connstr") ? "The connection string has no DRIVER" : "--driver is required",
                            "See odbcadmin dsn add --help");
    if (const model::Reason reason = model::whyNotAdd(configuration, *wish))
        return session.fail(reason);
    const SetupWork work{Action::add, wish->name, wish->attributes, "add data source " + wish->name, *limit};
    Remarks remarks;
    const ChangeResult result = change(session, configuration.driver(wish->driver), line, work, remarks,
                                       [&] { return model::addDataSource(configuration, *wish, session.way()); });
    for (const std::string& each : remarksOnNew(configuration, wish->driver, wish->attributes))
        remarks.push_back(each);
    if (const std::string hidden = besides(session, wish->name); result.isDone() && !hidden.empty())
        remarks.push_back("it hides " + hidden + ", the system's");
    return session.report(result, "Added data source " + wish->name, remarks);
}

// The driver that is given, or the one that the data source has.
std::string driverOf(const Configuration& configuration, const model::DataSourceWish& wish) {
    const auto present = configuration.dataSource(wish.name);
    return wish.driver.empty() && present ? present->driver : wish.driver;
}

ExitCode ensureDataSource(const Session& session, const Configuration& configuration, const Line& line) {
    const auto wish = wishOf(session, line);
    if (!wish)
        return ExitCode::wrongUse;
    const bool isPresent = configuration.dataSource(wish->name).has_value();
    const model::OtherKeys others = line.has("--exact") ? model::OtherKeys::remove : model::OtherKeys::keep;
    return session.report(model::ensureDataSource(configuration, *wish, others, session.way()),
                          (isPresent ? "Changed data source " : "Added data source ") + wish->name,
                          remarksOnKeys(configuration, driverOf(configuration, *wish), wish->attributes));
}

// A setup library works on sections that exist, for drivers that are registered; it takes an empty value as none.
ExitCode setKeys(const Session& session, const Configuration& configuration, const Line& line) {
    if (hasReference(line))
        return setReference(session, configuration, line);
    const std::string name = line.text("NAME");
    const auto limit = timeLimit(session, line, kSetupLimit);
    const auto attributes = limit ? attributesOf(session, line) : std::nullopt;
    if (!attributes)
        return ExitCode::wrongUse;
    if (const model::Reason reason = model::whyNotSet(configuration, name, *attributes))
        return session.fail(reason);
    const SetupWork work{Action::configure, name, *attributes, "change data source " + name, *limit};
    const std::string driverName = configuration.dataSource(name)->driver;
    const auto& driver = configuration.driver(driverName);
    Remarks remarks;
    const ChangeResult result = change(session, driver, line, work, remarks,
                                       [&] { return model::setKeys(configuration, name, *attributes, session.way()); });
    for (const std::string& each : remarksOnKeys(configuration, driverName, *attributes))
        remarks.push_back(each);
    return session.report(result, "Changed data source " + name, remarks);
}

ExitCode unsetKeys(const Session& session, const Configuration& configuration, const Line& line) {
    const std::string name = line.text("NAME");
    return session.report(model::unsetKeys(configuration, name, line.texts("KEY"), session.way()),
                          "Changed data source " + name);
}

// Every name is looked up before the first one is removed.
model::Reason findAll(const Configuration& configuration, const Line& line, std::vector<model::DataSource>& sources) {
    for (const std::string& name : line.texts("NAME")) {
        model::Reason reason = model::whyNotThere(configuration, name);
        if (!reason)
            sources.push_back(*configuration.dataSource(name));
        else if (reason.kind != model::Reason::Kind::notFound || !line.has("--if-exists"))
            return reason;
    }
    return {};
}

// Those that no setup library removes are left for one change of the file.
ExitCode removeDataSources(const Session& session, const Configuration& configuration, const Line& line) {
    std::vector<model::DataSource> sources;
    const auto limit = timeLimit(session, line, kSetupLimit);
    if (!limit)
        return ExitCode::wrongUse;
    if (const model::Reason reason = findAll(configuration, line, sources))
        return session.fail(reason);
    ChangeResult result;
    Remarks remarks;
    std::vector<std::string> left;
    for (const model::DataSource& source : sources) {
        const SetupWork work{Action::remove, source.name, {}, "remove data source " + source.name, *limit};
        ChangeResult next = change(session, configuration.driver(source.driver), line, work, remarks, [&] {
            left.push_back(source.name);
            return ChangeResult();
        });
        if (!result.add(std::move(next)).isDone())
            return session.report(result, {});
    }
    if (!left.empty())
        result.add(model::removeDataSources(left, session.way()));
    for (const model::DataSource& source : sources)
        if (const std::string shown = besides(session, source.name); result.isDone() && !shown.empty())
            remarks.push_back(shown + ", the system's, answers now");
    return session.report(result, "Removed data source " + model::joined(namesOf(sources)), remarks);
}

constexpr const char* kDirect = "Write the file without the driver's setup library";
constexpr const char* kTimeout = "Seconds that the driver's setup library may take (30)";

// The operands of a verb that fills a section, and its driver.
void addSectionOperands(Verb& verb) {
    verb.operand("NAME", "Data source", kOne)
        .operand("KEY=VALUE", "What its section is to hold", kAny, Complete::keysDriverAsksFor)
        .option("--driver", "Its driver, as driver list shows it", Complete::driver);
}

// The options of a verb that takes a value unseen.
Verb& addUnseenOptions(Verb& verb) {
    return verb.flag("--stdin", "Read the value of the KEY that has none from standard input, or ask for it unseen")
        .flag("--allow-empty", "Take an empty standard input as an empty value");
}

}  // namespace

void addDsnChangeCommands(CLI::App& app, Session& session) {
    Verb add = addVerb(app, session, "dsn add", "Add a data source",
                       "odbcadmin dsn add Sales --driver SQLite3 Database=/srv/sales.db Timeout=30\n"
                       "odbcadmin dsn add \"Sales 2026\" --driver SQLite3 \"Description=Sales of the year\" --dry-run\n"
                       "odbcadmin dsn add Sales --connstr \"DRIVER={SQLite3};Database=/srv/sales.db\"");
    addSectionOperands(add);
    addUnseenOptions(add.option("--connstr", "A connection string: its DRIVER and its attributes"))
        .flag("--direct", kDirect)
        .timeout(kTimeout)
        .onRead(Needs::bothFiles, addDataSource);
    Verb ensure =
        addVerb(app, session, "dsn ensure", "Ensure a data source is there with these keys; do nothing if it is",
                "odbcadmin dsn ensure Sales --driver SQLite3 Database=/srv/sales.db\n"
                "odbcadmin dsn ensure Sales --driver SQLite3 Database=/srv/sales.db --exact --check");
    addSectionOperands(ensure);
    addUnseenOptions(ensure)
        .flag("--exact", "Remove all other keys of its section")
        .onRead(Needs::bothFiles, ensureDataSource);
    Verb set = addVerb(app, session, "dsn set", "Set keys of a data source",
                       "odbcadmin dsn set Sales Timeout=30 Server=db1\n"
                       "odbcadmin dsn set Sales PWD --stdin < password.txt\n"
                       "odbcadmin dsn set Sales Password --from-file /run/secrets/sales");
    set.operand("NAME", "Data source", kOne, Complete::dsn)
        .operand("KEY=VALUE", "What to store", kSome, Complete::keysDriverAsksFor);
    addReferenceOptions(addUnseenOptions(set).flag("--direct", kDirect).timeout(kTimeout));
    set.onRead(Needs::bothFiles, setKeys);
    addVerb(app, session, "dsn unset", "Remove keys of a data source", "odbcadmin dsn unset Sales Timeout Server")
        .operand("NAME", "Data source", kOne, Complete::dsn)
        .operand("KEY", "Keys", kSome, Complete::keysOfDsn)
        .onRead(Needs::bothFiles, unsetKeys);
    addVerb(app, session, "dsn remove", "Remove data sources",
            "odbcadmin dsn remove Sales\nodbcadmin dsn remove Sales Accounts --if-exists")
        .operand("NAME", "Data sources", kSome, Complete::dsn)
        .flag("--if-exists", "Pass over those that are not there")
        .flag("--direct", kDirect)
        .timeout(kTimeout)
        .onRead(Needs::bothFiles, removeDataSources);
}

}  // namespace jx::cli
