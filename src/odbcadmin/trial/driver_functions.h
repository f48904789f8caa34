// The few ODBC functions of a driver that connecting takes, found in its library.
#pragma once

#include <dlfcn.h>

#include <cstdint>
#include <string>

namespace jx::trial {

using OdbcResult = short;

// 0 and 1 (success with a remark) are success in every ODBC function.
inline bool succeeded(OdbcResult result) {
    return result == 0 || result == 1;
}

enum OdbcHandleType : short { kEnvironmentHandle = 1, kConnectionHandle = 2 };

inline constexpr short kWholeText = -3;
inline constexpr int kOdbcVersionAttribute = 200;
inline constexpr std::intptr_t kOdbcVersion3 = 3;
inline constexpr unsigned short kDriverName = 6, kDriverVersion = 7, kDatabaseName = 17, kDatabaseVersion = 18;

// As the ODBC reference declares them; a text is of char, or of char16_t where the name ends with W.
using AllocHandle = OdbcResult (*)(short type, void* input, void** output);
using AllocEnv = OdbcResult (*)(void** output);
using AllocConnect = OdbcResult (*)(void* environment, void** output);
using FreeHandle = OdbcResult (*)(short type, void* handle);
using SetEnvAttr = OdbcResult (*)(void* environment, int attribute, void* value, int length);
template <typename Letter>
using DriverConnect = OdbcResult (*)(void* connection, void* window, const Letter* input, short inputLength,
                                     Letter* output, short outputSize, short* outputLength, unsigned short completion);
template <typename Letter>
using Connect = OdbcResult (*)(void* connection, const Letter* source, short sourceLength, const Letter* user,
                               short userLength, const Letter* password, short passwordLength);
template <typename Letter>
using GetDiagRec = OdbcResult (*)(short type, void* handle, short number, Letter* state, int* native, Letter* text,
                                  short size, short* length);
using Error = OdbcResult (*)(void* environment, void* connection, void* statement, char* state, int* native, char* text,
                             short size, short* length);
using GetInfo = OdbcResult (*)(void* connection, unsigned short type, void* value, short size, short* length);
using Disconnect = OdbcResult (*)(void* connection);

// A function of the library by its name; null when it has none.
template <typename Function>
Function functionOf(void* library, const std::string& name) {
    return reinterpret_cast<Function>(dlsym(library, name.c_str()));
}

}  // namespace jx::trial
