// Finding descendants in /proc and killing them until there are none.
#include "odbcadmin/trial/helper/descendants.h"

#include <ctype.h>
#include <dirent.h>
#include <errno.h>
#include <fcntl.h>
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

enum { kRounds = 500, kRoundNanoseconds = 10 * 1000 * 1000 };

typedef struct {
    pid_t process, parent;
    bool isOurs;
} Process;

typedef struct {
    Process* rows;
    size_t count, room;
} Processes;

void keepDescendants(void) {
    prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0);
}

// The parent's number stands behind the name, which stands in brackets and may hold any letter; 0 when it cannot be
// read.
static pid_t parentOf(const char* process) {
    char path[64];
    char text[512];
    snprintf(path, sizeof path, "/proc/%.20s/stat", process);
    const int descriptor = open(path, O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        return 0;
    const ssize_t length = read(descriptor, text, sizeof text - 1);
    close(descriptor);
    text[length > 0 ? length : 0] = '\0';
    const char* behindName = strrchr(text, ')');
    int parent = 0;
    // NOLINTNEXTLINE(cert-err34-c,bugprone-unchecked-string-to-number-conversion): the kernel writes numbers
    return behindName != NULL && sscanf(behindName, ") %*c %d", &parent) == 1 ? parent : 0;
}

static bool add(Processes* all, Process row) {
    if (all->count == all->room) {
        const size_t room = all->room * 2 + 256;
        Process* rows = realloc(all->rows, room * sizeof *rows);
        if (rows == NULL)
            return false;
        all->rows = rows;
        all->room = room;
    }
    all->rows[all->count++] = row;
    return true;
}

static void readProcesses(Processes* all) {
    DIR* directory = opendir("/proc");
    all->count = 0;
    for (struct dirent* entry; directory != NULL && (entry = readdir(directory)) != NULL;) {
        const char* name = entry->d_name;
        if (isdigit((unsigned char)name[0]) &&
            !add(all, (Process){(pid_t)strtol(name, NULL, 10), parentOf(name), false}))
            break;
    }
    if (directory != NULL)
        closedir(directory);
}

static bool isOurs(const Processes* all, pid_t process) {
    for (size_t i = 0; i < all->count; ++i)
        if (all->rows[i].process == process)
            return all->rows[i].isOurs;
    return false;
}

// Each pass finds the children of those found before.
static void killDescendants(Processes* all) {
    const pid_t self = getpid();
    readProcesses(all);
    for (bool isNew = true; isNew;) {
        isNew = false;
        for (size_t i = 0; i < all->count; ++i) {
            Process* each = &all->rows[i];
            if (each->isOurs || (each->parent != self && !isOurs(all, each->parent)))
                continue;
            each->isOurs = true;
            isNew = true;
            kill(each->process, SIGKILL);
        }
    }
}

bool endDescendants(void) {
    static Processes all;
    const struct timespec round = {0, kRoundNanoseconds};
    sigset_t ends;
    sigemptyset(&ends);
    sigaddset(&ends, SIGCHLD);
    for (int i = 0; i < kRounds; ++i) {
        killDescendants(&all);
        while (waitpid(-1, NULL, WNOHANG) > 0) {
        }
        if (waitpid(-1, NULL, WNOHANG) < 0 && errno == ECHILD)
            return true;
        sigtimedwait(&ends, NULL, &round);
    }
    return false;
}
