// ncurses with wide characters and without its macros.
#pragma once

#ifndef NCURSES_WIDECHAR
#define NCURSES_WIDECHAR 1
#endif
#define NCURSES_NOMACROS 1
#include <ncurses.h>
