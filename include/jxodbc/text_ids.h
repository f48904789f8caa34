/* The numbers of the texts of module "odbcinst":
 *
 *     unsigned char text[256];
 *     winGetString(text, JxTextAddFailed);
 *
 * Ids are part of the interface; they never change. Plain C can include this header. */
#ifndef JX_TEXT_IDS_H
#define JX_TEXT_IDS_H

typedef enum JxTextId {
    JxTextRemoveFailed = 50,
    JxTextChangeFailed = 51,
    JxTextAddFailed = 52,
    JxTextConfirmRemove = 53, /* a printf pattern: one %s, the data source's name */
    JxTextSetupNotLoaded = 54,
    JxTextUnknownDataSource = 55,
    JxTextTranslatorNotLoaded = 56,  /* %1: the library's path */
    JxTextTranslatorNoRoutine = 57,  /* %1: the library's path */
    JxTextTranslatorTitle = 58,      /* the title over 56 and 57 */
    JxTextFileNotDeleted = 167,      /* %1: the file's path */
    JxTextFileNotDeletedTitle = 168, /* the title over 167 */
    JxTextDriversTitle = 169,        /* the title over 170 and 171 */
    JxTextConfirmDriverRemove = 170, /* %1: the driver's name */
    JxTextNoScript = 171             /* the question where a folder holds no installation script */
} JxTextId;

#endif
