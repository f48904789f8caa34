// What the worker can do with a library. Each takes its request and leaves its answer in the report; a record stands
// there before every step that may not return.
#pragma once

#include "odbcadmin/trial/helper/request.h"

// Loads the library, asks for the functions named ("function") and unloads it.
// Records  refused SENTENCE; or loaded, offered NAME for each that is there, unloaded.
void loadLibrary(const Request* request);

// Loads the library and connects as a driver manager would, with no window and no dialog: SQLAllocHandle,
// SQLSetEnvAttr, SQLDriverConnect with the text of "connect", SQLGetDiagRec; with the functions of the standard's
// second version where a driver has those only ("source": the data source), and with the wide ones (UTF-16) where it
// has no others. Then disconnects.
//
// Records  refused SENTENCE; or calls NAME before each call, missing NAME for a function that is not there, failed
//          RESULT for one that did not succeed; state, native and message of each remark; driver, database, connected.
void connectToSource(const Request* request);

// Loads the setup library and calls its CONFIGDSN, or else its ConfigDSN, with no window, "request" (a number),
// "driver" and one item for each "attribute".
//
// Records  refused SENTENCE; missing ConfigDSN; or calls NAME, error TEXT for each that the routine has left with an
//          installer library, agreed or declined.
void callSetupRoutine(const Request* request);
