/* Put before every source by the build: functions that cannot be used safely do not compile. The standard headers that
 * mention them come first. */
#ifdef __cplusplus
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#else
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#endif

#pragma GCC poison strcpy strcat sprintf vsprintf strtok tmpnam mktemp gets
