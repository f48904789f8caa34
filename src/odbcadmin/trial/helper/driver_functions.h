// The few ODBC functions of a driver that connecting takes, as the ODBC reference declares them.
#pragma once

#include <stdint.h>
#include <uchar.h>

typedef short Result;

enum { kEnvironmentHandle = 1, kConnectionHandle = 2 };
enum { kWholeText = -3, kOdbcVersionAttribute = 200, kOdbcVersion3 = 3 };
enum { kDriverName = 6, kDriverVersion = 7, kDatabaseName = 17, kDatabaseVersion = 18 };

typedef Result (*AllocHandle)(short type, void* input, void** output);
typedef Result (*AllocEnv)(void** output);
typedef Result (*AllocConnect)(void* environment, void** output);
typedef Result (*FreeHandle)(short type, void* handle);
typedef Result (*SetEnvAttr)(void* environment, int attribute, void* value, int length);
typedef Result (*DriverConnect)(void* connection, void* window, const char* input, short inputLength, char* output,
                                short outputSize, short* outputLength, unsigned short completion);
typedef Result (*DriverConnectWide)(void* connection, void* window, const char16_t* input, short inputLength,
                                    char16_t* output, short outputSize, short* outputLength, unsigned short completion);
typedef Result (*Connect)(void* connection, const char* source, short sourceLength, const char* user, short userLength,
                          const char* password, short passwordLength);
typedef Result (*ConnectWide)(void* connection, const char16_t* source, short sourceLength, const char16_t* user,
                              short userLength, const char16_t* password, short passwordLength);
typedef Result (*GetDiagRec)(short type, void* handle, short number, char* state, int* native, char* text, short size,
                             short* length);
typedef Result (*GetDiagRecWide)(short type, void* handle, short number, char16_t* state, int* native, char16_t* text,
                                 short size, short* length);
typedef Result (*Error)(void* environment, void* connection, void* statement, char* state, int* native, char* text,
                        short size, short* length);
typedef Result (*GetInfo)(void* connection, unsigned short type, void* value, short size, short* length);
typedef Result (*Disconnect)(void* connection);
