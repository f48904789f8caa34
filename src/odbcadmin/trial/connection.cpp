// The calls that connect, made in a child, and the reading of its reports.
#include "odbcadmin/trial/connection.h"

#include <dlfcn.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>

#include "odbcadmin/trial/driver_functions.h"
#include "odbcadmin/trial/wide_text.h"

namespace jx::trial {

namespace {

// The kinds of the child's reports.
constexpr char kCalls = 'c';
constexpr char kNotLoaded = 'l';
constexpr char kNoFunction = 'n';
constexpr char kState = 's';
constexpr char kNative = 'i';
constexpr char kMessage = 'm';
constexpr char kRefused = 'r';
constexpr char kDriver = 'd';
constexpr char kDatabase = 'b';
constexpr char kConnected = 'k';

constexpr std::size_t kTextSize = 1024;
constexpr short kMostDiagnostics = 8;

std::string text(const char* letters, std::size_t length) {
    return {letters, std::find(letters, letters + length, '\0')};
}

std::string text(const char16_t* letters, std::size_t length) {
    return narrowText({letters, static_cast<std::size_t>(std::find(letters, letters + length, u'\0') - letters)});
}

// Names with characters that end a value go between braces.
std::string connectionString(const std::string& dataSource) {
    if (dataSource.find_first_of("[]{}(),;?*=!@") == std::string::npos)
        return "DSN=" + dataSource;
    std::string value;
    for (const char letter : dataSource)
        value.append(letter == '}' ? 2 : 1, letter);
    return "DSN={" + value + "}";
}

// The child's side. Every call is announced before it is made, so that the parent knows what hung or crashed.
class Client {
public:
    Client(void* library, int result) : library_(library), result_(result) {}

    bool connect(const std::string& dataSource) {
        if (!makeEnvironment() || !makeConnection())
            return false;
        const OdbcResult result = callConnect(dataSource);
        if (result != 0)
            reportDiagnostics();
        if (!succeeded(result)) {
            report(result_, kRefused, std::to_string(result));
            return false;
        }
        report(result_, kDriver, nameAndVersion(kDriverName, kDriverVersion));
        report(result_, kDatabase, nameAndVersion(kDatabaseName, kDatabaseVersion));
        report(result_, kConnected);
        return true;
    }

    void disconnect() {
        if (const auto call = function<Disconnect>("SQLDisconnect"))
            call(connection_);
        const auto release = function<FreeHandle>("SQLFreeHandle");
        if (release != nullptr) {
            release(kConnectionHandle, connection_);
            release(kEnvironmentHandle, environment_);
        }
    }

private:
    template <typename Function>
    Function function(const std::string& name) const {
        return functionOf<Function>(library_, name);
    }

    // The function, announced; null is announced as missing.
    template <typename Function>
    Function required(const std::string& name) const {
        const auto call = function<Function>(name);
        report(result_, call != nullptr ? kCalls : kNoFunction, name);
        return call;
    }

    bool isMade(OdbcResult result) const {
        if (!succeeded(result))
            report(result_, kRefused, std::to_string(result));
        return succeeded(result);
    }

    bool makeEnvironment() {
        if (function<AllocHandle>("SQLAllocHandle") == nullptr) {
            const auto make = required<AllocEnv>("SQLAllocEnv");
            return make != nullptr && isMade(make(&environment_));
        }
        const auto make = required<AllocHandle>("SQLAllocHandle");
        if (!isMade(make(kEnvironmentHandle, nullptr, &environment_)))
            return false;
        if (function<SetEnvAttr>("SQLSetEnvAttr") == nullptr)
            return true;
        const auto set = required<SetEnvAttr>("SQLSetEnvAttr");
        // NOLINTNEXTLINE(performance-no-int-to-ptr): the call takes numbers so
        void* version = reinterpret_cast<void*>(kOdbcVersion3);
        return isMade(set(environment_, kOdbcVersionAttribute, version, 0));
    }

    bool makeConnection() {
        if (const auto make = function<AllocHandle>("SQLAllocHandle")) {
            report(result_, kCalls, "SQLAllocHandle");
            return isMade(make(kConnectionHandle, environment_, &connection_));
        }
        const auto make = required<AllocConnect>("SQLAllocConnect");
        return make != nullptr && isMade(make(environment_, &connection_));
    }

    OdbcResult callConnect(const std::string& dataSource) const {
        const std::string complete = connectionString(dataSource);
        if (function<void*>("SQLDriverConnect") != nullptr)
            return driverConnect<char>("SQLDriverConnect", complete);
        if (function<void*>("SQLDriverConnectW") != nullptr)
            return driverConnect<char16_t>("SQLDriverConnectW", wideText(complete));
        if (function<void*>("SQLConnectW") != nullptr && function<void*>("SQLConnect") == nullptr)
            return plainConnect<char16_t>("SQLConnectW", wideText(dataSource));
        return plainConnect<char>("SQLConnect", dataSource);
    }

    template <typename Letter>
    OdbcResult driverConnect(const char* name, const std::basic_string<Letter>& input) const {
        std::array<Letter, kTextSize> output{};
        short length = 0;
        const auto call = required<DriverConnect<Letter>>(name);
        return call(connection_, nullptr, input.c_str(), kWholeText, output.data(), kTextSize, &length, 0);
    }

    template <typename Letter>
    OdbcResult plainConnect(const char* name, const std::basic_string<Letter>& source) const {
        const Letter none[] = {0};
        const auto call = required<Connect<Letter>>(name);
        return call == nullptr ? OdbcResult{-1}
                               : call(connection_, source.c_str(), kWholeText, none, kWholeText, none, kWholeText);
    }

    void reportDiagnostics() const {
        for (short number = 1; number <= kMostDiagnostics; ++number) {
            if (!reportDiagnostic(number))
                return;
        }
    }

    bool reportDiagnostic(short number) const {
        if (const auto call = function<GetDiagRec<char>>("SQLGetDiagRec"))
            return take<char>([&](auto... rest) { return call(kConnectionHandle, connection_, number, rest...); });
        if (const auto call = function<GetDiagRec<char16_t>>("SQLGetDiagRecW"))
            return take<char16_t>([&](auto... rest) { return call(kConnectionHandle, connection_, number, rest...); });
        const auto call = function<Error>("SQLError");
        return call != nullptr &&
               take<char>([&](auto... rest) { return call(environment_, connection_, nullptr, rest...); });
    }

    // The buffers have a NUL more than the driver is told of.
    template <typename Letter, typename Call>
    bool take(const Call& call) const {
        std::array<Letter, 7> state{};
        std::array<Letter, kTextSize + 1> message{};
        int native = 0;
        short length = 0;
        if (!succeeded(call(state.data(), &native, message.data(), static_cast<short>(kTextSize), &length)))
            return false;
        report(result_, kState, text(state.data(), state.size()));
        report(result_, kNative, std::to_string(native));
        report(result_, kMessage, text(message.data(), message.size()));
        return true;
    }

    std::string info(unsigned short type) const {
        alignas(char16_t) std::array<char, kTextSize> value{};
        short length = 0;
        const short size = kTextSize - 2;
        if (const auto call = function<GetInfo>("SQLGetInfo")) {
            const bool known = succeeded(call(connection_, type, value.data(), size, &length));
            return known ? text(value.data(), value.size()) : std::string();
        }
        const auto call = function<GetInfo>("SQLGetInfoW");
        if (call == nullptr || !succeeded(call(connection_, type, value.data(), size, &length)))
            return {};
        return text(reinterpret_cast<const char16_t*>(value.data()), value.size() / sizeof(char16_t));
    }

    std::string nameAndVersion(unsigned short name, unsigned short version) const {
        const std::string both = info(name) + " " + info(version);
        return both == " " ? "" : both;
    }

    void* library_;
    int result_;
    void* environment_ = nullptr;
    void* connection_ = nullptr;
};

int connectInChild(const std::string& library, const std::string& dataSource, int result) {
    // Drivers open the installer library by this name; being loaded, it is found wherever it is installed.
    ::dlopen("libodbcinst.so.1", RTLD_NOW | RTLD_LOCAL);
    void* driver = ::dlopen(library.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (driver == nullptr) {
        report(result, kNotLoaded, ::dlerror());
        return EXIT_SUCCESS;
    }
    Client client(driver, result);
    if (client.connect(dataSource))
        client.disconnect();
    return EXIT_SUCCESS;
}

void takeConnection(char kind, const std::string& text, ConnectReport& trial) {
    using End = ConnectReport::End;
    switch (kind) {
        case kCalls:
            trial.function = text;
            break;
        case kNotLoaded:
            trial.end = End::notLoaded;
            trial.sentence = text;
            break;
        case kNoFunction:
            trial.end = End::noFunction;
            trial.function = text;
            break;
        case kRefused:
            trial.end = trial.end == End::noFunction ? End::noFunction : End::refused;
            trial.code = std::atoi(text.c_str());
            break;
        case kState:
            trial.diagnostics.push_back({text, 0, ""});
            break;
        case kNative:
            if (!trial.diagnostics.empty())
                std::from_chars(text.data(), text.data() + text.size(), trial.diagnostics.back().native);
            break;
        case kMessage:
            if (!trial.diagnostics.empty())
                trial.diagnostics.back().message = text;
            break;
        case kDriver:
            trial.driver = text;
            break;
        case kDatabase:
            trial.database = text;
            break;
        case kConnected:
            trial.end = End::connected;
            break;
        default:
            break;
    }
}

}  // namespace

ConnectReport tryConnecting(const ConnectRequest& request, const Waiting& waiting) {
    const auto body = [&](int result) { return connectInChild(request.library, request.dataSource, result); };
    return answerOf<ConnectReport>(runInChild(body, request.limit, waiting), takeConnection);
}

}  // namespace jx::trial
