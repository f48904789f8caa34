/* The parts of jxini_test that are written in C. */
#ifndef JXINI_C99_H
#define JXINI_C99_H

#ifdef __cplusplus
extern "C" {
#endif

/* Uses every function of jxini.h on file, which holds "; mine\n[A]\nb = c\n", and stores b=2 in it. Returns the number
 * of the first line that failed, or 0. */
int use_jxini(const char* file);

#ifdef __cplusplus
}
#endif

#endif
