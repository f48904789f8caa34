// What a user has done with one data source that is chosen in a list.
#pragma once

#include <jxdialog.h>

#include "odbcadmin/assist/chosen_source.h"

namespace jx::assist {

// Whether the data source can be found: false when its file cannot be read or another program has removed it, which is
// shown; the list is then read again.
bool isStillThere(HWND dialog, const ChosenSource& source);

// Whether the library's own commands cannot do anything with it: a name is longer than they take, or its driver has no
// setup library that could remove it. setUpSource and removeSource can.
bool isTooLong(const ChosenSource& source);
bool isWithoutSetup(const ChosenSource& source);

// Whether the library's setup dialogs cannot be used: it is the system's, or only the system has its driver.
bool isSetUpHere(const ChosenSource& source);

// Has its driver's setup library show its dialog, or shows one of our own. Offers the general setup library when there
// is none. What goes wrong is shown.
void setUpSource(HWND dialog, const ChosenSource& source);

// Asks, then has the driver's setup library remove it, or removes its entries when there is none.
void removeSource(HWND dialog, const ChosenSource& source);

// Shows its keys and values, secrets as stars.
void viewSource(HWND dialog, const ChosenSource& source);

// Connects with it in the helper program, and shows what happened; or else what the doctor says.
void testSource(HWND dialog, const ChosenSource& source);

enum class Naming { copy, rename };

// Asks for a name and copies or renames it, until that is done or the user cancels.
void nameSource(HWND dialog, const ChosenSource& source, Naming naming);

}  // namespace jx::assist
