// The action "connect".
#include <dlfcn.h>
#include <stdbool.h>
#include <stdint.h>
#include <stdio.h>
#include <string.h>

#include "odbcadmin/trial/helper/actions.h"
#include "odbcadmin/trial/helper/driver_functions.h"
#include "odbcadmin/trial/helper/library.h"
#include "odbcadmin/trial/helper/report.h"
#include "odbcadmin/trial/helper/wide_text.h"

enum { kTextSize = 1024, kMostBytes = 4 * kTextSize };

static const short kMostDiagnostics = 8;
static const Result kNoFunction = -1;

typedef struct {
    void* library;
    void* environment;
    void* connection;
} Client;

static bool succeeded(Result result) {
    return result == 0 || result == 1;
}

static void* find(const Client* client, const char* name) {
    return dlsym(client->library, name);
}

// The function, announced; null is announced as missing.
static void* required(const Client* client, const char* name) {
    void* function = find(client, name);
    report(function != NULL ? "calls" : "missing", name);
    return function;
}

static bool isDone(Result result) {
    if (!succeeded(result))
        reportNumber("failed", result);
    return succeeded(result);
}

static bool makeEnvironment(Client* client) {
    if (find(client, "SQLAllocHandle") == NULL) {
        const AllocEnv make = (AllocEnv)required(client, "SQLAllocEnv");
        return make != NULL && isDone(make(&client->environment));
    }
    const AllocHandle make = (AllocHandle)required(client, "SQLAllocHandle");
    if (!isDone(make(kEnvironmentHandle, NULL, &client->environment)))
        return false;
    if (find(client, "SQLSetEnvAttr") == NULL)
        return true;
    const SetEnvAttr set = (SetEnvAttr)required(client, "SQLSetEnvAttr");
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the call takes numbers so
    void* version = (void*)(intptr_t)kOdbcVersion3;
    return isDone(set(client->environment, kOdbcVersionAttribute, version, 0));
}

static bool makeConnection(Client* client) {
    if (find(client, "SQLAllocHandle") != NULL) {
        const AllocHandle make = (AllocHandle)required(client, "SQLAllocHandle");
        return isDone(make(kConnectionHandle, client->environment, &client->connection));
    }
    const AllocConnect make = (AllocConnect)required(client, "SQLAllocConnect");
    return make != NULL && isDone(make(client->environment, &client->connection));
}

static Result connectWide(const Client* client, const Request* request) {
    static char16_t input[kLongestRequest];
    char16_t output[kTextSize] = {0};
    short length = 0;
    if (find(client, "SQLDriverConnectW") != NULL) {
        widen(requestText(request, "connect"), input, kLongestRequest);
        const DriverConnectWide call = (DriverConnectWide)required(client, "SQLDriverConnectW");
        return call(client->connection, NULL, input, kWholeText, output, kTextSize, &length, 0);
    }
    widen(requestText(request, "source"), input, kLongestRequest);
    const ConnectWide call = (ConnectWide)required(client, "SQLConnectW");
    return call(client->connection, input, kWholeText, u"", kWholeText, u"", kWholeText);
}

static Result callConnect(const Client* client, const Request* request) {
    char output[kTextSize] = "";
    short length = 0;
    if (find(client, "SQLDriverConnect") != NULL) {
        const DriverConnect call = (DriverConnect)required(client, "SQLDriverConnect");
        return call(client->connection, NULL, requestText(request, "connect"), kWholeText, output, kTextSize, &length,
                    0);
    }
    const bool hasPlain = find(client, "SQLConnect") != NULL;
    if (find(client, "SQLDriverConnectW") != NULL || (!hasPlain && find(client, "SQLConnectW") != NULL))
        return connectWide(client, request);
    const Connect call = (Connect)required(client, "SQLConnect");
    if (call == NULL)
        return kNoFunction;
    return call(client->connection, requestText(request, "source"), kWholeText, "", kWholeText, "", kWholeText);
}

static void reportDiagnostic(const char* state, int native, const char* message) {
    report("state", state);
    reportNumber("native", native);
    report("message", message);
}

// The buffers have more than the driver is told of, and stay ended by a NUL.
static bool takeWideDiagnostic(const Client* client, GetDiagRecWide call, short number) {
    char16_t state[8] = {0};
    char16_t message[kTextSize + 2] = {0};
    char narrowState[32];
    char narrowMessage[kMostBytes];
    int native = 0;
    short length = 0;
    if (!succeeded(call(kConnectionHandle, client->connection, number, state, &native, message, kTextSize, &length)))
        return false;
    state[7] = message[kTextSize + 1] = 0;
    narrow(state, narrowState, sizeof narrowState);
    narrow(message, narrowMessage, sizeof narrowMessage);
    reportDiagnostic(narrowState, native, narrowMessage);
    return true;
}

static bool takeDiagnostic(const Client* client, short number) {
    const GetDiagRec get = (GetDiagRec)find(client, "SQLGetDiagRec");
    const GetDiagRecWide getWide = (GetDiagRecWide)find(client, "SQLGetDiagRecW");
    if (get == NULL && getWide != NULL)
        return takeWideDiagnostic(client, getWide, number);
    const Error error = (Error)find(client, "SQLError");
    char state[8] = "";
    char message[kTextSize + 2] = "";
    int native = 0;
    short length = 0;
    Result result = -1;
    if (get != NULL)
        result = get(kConnectionHandle, client->connection, number, state, &native, message, kTextSize, &length);
    else if (error != NULL)
        result = error(client->environment, client->connection, NULL, state, &native, message, kTextSize, &length);
    state[7] = message[kTextSize + 1] = '\0';
    if (succeeded(result))
        reportDiagnostic(state, native, message);
    return succeeded(result);
}

static void takeDiagnostics(const Client* client) {
    for (short number = 1; number <= kMostDiagnostics; ++number)
        if (!takeDiagnostic(client, number))
            return;
}

static void takeInfo(const Client* client, unsigned short type, char* text) {
    union {
        char16_t wide[kTextSize];
        char narrow[2 * kTextSize];
    } value = {{0}};
    short length = 0;
    const short size = 2 * kTextSize - 2;
    const GetInfo get = (GetInfo)find(client, "SQLGetInfo");
    const GetInfo getWide = (GetInfo)find(client, "SQLGetInfoW");
    text[0] = '\0';
    if (get != NULL) {
        if (succeeded(get(client->connection, type, value.narrow, size, &length)))
            snprintf(text, kMostBytes, "%.*s", size, value.narrow);
    } else if (getWide != NULL && succeeded(getWide(client->connection, type, value.wide, size, &length))) {
        value.wide[kTextSize - 1] = 0;
        narrow(value.wide, text, kMostBytes);
    }
}

static void reportNameAndVersion(const Client* client, const char* word, unsigned short name, unsigned short version) {
    char first[kMostBytes];
    char second[kMostBytes];
    char both[2 * kMostBytes + 1];
    takeInfo(client, name, first);
    takeInfo(client, version, second);
    if (*first == '\0' && *second == '\0')
        return;
    snprintf(both, sizeof both, "%s %s", first, second);
    report(word, both);
}

static void disconnect(const Client* client) {
    const Disconnect end = (Disconnect)find(client, "SQLDisconnect");
    const FreeHandle release = (FreeHandle)find(client, "SQLFreeHandle");
    if (end != NULL)
        end(client->connection);
    if (release != NULL) {
        release(kConnectionHandle, client->connection);
        release(kEnvironmentHandle, client->environment);
    }
}

void connectToSource(const Request* request) {
    Client client = {openLibrary(requestText(request, "library")), NULL, NULL};
    if (client.library == NULL) {
        report("refused", openFailure());
        return;
    }
    if (!makeEnvironment(&client) || !makeConnection(&client))
        return;
    const Result result = callConnect(&client, request);
    if (result != 0)
        takeDiagnostics(&client);
    if (!isDone(result))
        return;
    reportNameAndVersion(&client, "driver", kDriverName, kDriverVersion);
    reportNameAndVersion(&client, "database", kDatabaseName, kDatabaseVersion);
    report("connected", "");
    disconnect(&client);
}
