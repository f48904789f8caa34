/* Shared by the parts of the C host program: a check that reports and counts failures, and the program's folder. */
#ifndef HOST_H
#define HOST_H

#include <stdio.h>

extern int host_failures;

#define CHECK(condition)                                                           \
    do {                                                                           \
        if (!(condition)) {                                                        \
            printf("%s:%d: this is not so: %s\n", __FILE__, __LINE__, #condition); \
            ++host_failures;                                                       \
        }                                                                          \
    } while (0)

/* This program's home: an empty folder, without a trailing slash. */
extern const char* host_folder;

/* The installed libjxsetup.so. */
extern const char* host_setup_library;

/* FOLDER/name, valid until the next call. */
const char* in_folder(const char* name);

/* Writes, and compares, a whole file of the folder. */
void put_file(const char* name, const char* text);
int file_holds(const char* name, const char* text);

/* The parts; each calls the functions of one header or two. */
void use_profiles(void);
void use_data_sources(void);
void use_installation(void);
void use_exported_data(void);
void use_dialogs(void);
void use_memory(void);
void use_text(void);
void use_files(void);
void use_opened_profiles(void);
void use_tasks(void);
void use_boxes(void);
void use_ini_store(void);
void use_windows(void);

#endif
