// The texts of module "odbcinst".
#pragma once

#include <jxdialog.h>
#include <text_ids.h>

namespace jx {

// The name of the module, as in BJXHINST.
inline constexpr char kTextModule[] = "odbcinst";

// The texts by id, as JXW_RegisterModule takes them; JXW_LoadString loads one. Each fits into 255 bytes, 53 also with a
// name of 49 bytes in it. Texts with "%1" may become longer, since paths are shown whole.
inline constexpr JxwString kTexts[] = {
    {JxTextRemoveFailed,
     "The driver's setup library did not remove the data source. If you did not cancel it, check that you may write to "
     "your configuration files, and try again."},
    {JxTextChangeFailed,
     "The driver's setup library did not change the data source. If you did not cancel it, check the settings you "
     "entered, and try again."},
    {JxTextAddFailed,
     "The data source was not added. If you did not cancel it, check that the driver's setup library is installed "
     "(key Setup in .odbcinst.ini) and that the settings you entered are right."},
    {JxTextConfirmRemove, "Remove the data source \"%s\"?\nIts settings are deleted and cannot be restored."},
    {JxTextSetupNotLoaded,
     "The driver's setup library could not be loaded; the data source was left as it is. Check that the file named by "
     "the driver's Setup key in .odbcinst.ini exists and that the libraries it needs are installed."},
    {JxTextUnknownDataSource, "There is no data source of this name. Choose one from the list, or add it first."},
    {JxTextTranslatorNotLoaded,
     "The translator's setup library could not be loaded:\n%1\nCheck that the file exists and that the libraries it "
     "needs are installed."},
    {JxTextTranslatorNoRoutine,
     "The translator's setup library has no ConfigTranslator routine:\n%1\nCheck that the translator's Setup key in "
     ".odbcinst.ini names the right file."},
    {JxTextTranslatorTitle, "Translator Setup"},
    {JxTextFileNotDeleted,
     "This file could not be deleted:\n%1\nThe driver is removed from the configuration all the same. Delete the file "
     "yourself if no other driver needs it."},
    {JxTextFileNotDeletedTitle, "File Not Deleted"},
    {JxTextDriversTitle, "ODBC Drivers"},
    {JxTextConfirmDriverRemove,
     "Remove the driver \"%1\"?\nIts driver and setup library files are deleted from the disk, and so are all data "
     "sources whose driver's name contains this name. This cannot be undone."},
    {JxTextNoScript,
     "There is no installation script (odbc.inf) in this directory. Do you want to choose another directory?"},
    {0, nullptr}};

}  // namespace jx
