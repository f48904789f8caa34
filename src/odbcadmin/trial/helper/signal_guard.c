// The filter: calls that take a process number, and the numbers they may not take.
#include "odbcadmin/trial/helper/signal_guard.h"

#include <errno.h>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <stddef.h>
#include <stdint.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#if defined(__x86_64__)
#define JX_ARCHITECTURE AUDIT_ARCH_X86_64
#elif defined(__i386__)
#define JX_ARCHITECTURE AUDIT_ARCH_I386
#elif defined(__aarch64__)
#define JX_ARCHITECTURE AUDIT_ARCH_AARCH64
#endif

#ifdef JX_ARCHITECTURE

enum { kRoom = 128, kX32Calls = 0x40000000 };

// Calls whose first argument is a process, and the one whose second is.
static const uint32_t kFirst[] = {
    SYS_kill, SYS_tkill, SYS_tgkill, SYS_rt_sigqueueinfo, SYS_rt_tgsigqueueinfo, SYS_prlimit64, SYS_process_vm_writev};

typedef struct {
    struct sock_filter lines[kRoom];
    unsigned short count;
} Filter;

static void add(Filter* filter, struct sock_filter line) {
    filter->lines[filter->count++] = line;
}

static void load(Filter* filter, size_t offset) {
    add(filter, (struct sock_filter)BPF_STMT(BPF_LD | BPF_W | BPF_ABS, (uint32_t)offset));
}

static void answer(Filter* filter, uint32_t result) {
    add(filter, (struct sock_filter)BPF_STMT(BPF_RET | BPF_K, result));
}

// The next line is for a loaded word of that value, the one behind it for all others.
static void unlessEqual(Filter* filter, uint32_t value) {
    add(filter, (struct sock_filter)BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, value, 0, 1));
}

// For the call: its argument, which is 32 bits wide in the kernel, against each of the protected numbers. All machines
// above have the low half first.
static void protect(Filter* filter, uint32_t call, int argument, const pid_t* spared, unsigned char count) {
    const unsigned char block = (unsigned char)(2 * count + 2);
    add(filter, (struct sock_filter)BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, call, 0, block));
    load(filter, offsetof(struct seccomp_data, args) + sizeof(uint64_t) * (size_t)argument);
    for (unsigned char i = 0; i < count; ++i) {
        unlessEqual(filter, (uint32_t)spared[i]);
        answer(filter, SECCOMP_RET_ERRNO | EPERM);
    }
    answer(filter, SECCOMP_RET_ALLOW);
}

static void addFrame(Filter* filter) {
    load(filter, offsetof(struct seccomp_data, arch));
    add(filter, (struct sock_filter)BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, JX_ARCHITECTURE, 1, 0));
    answer(filter, SECCOMP_RET_ERRNO | EPERM);
    load(filter, offsetof(struct seccomp_data, nr));
#ifdef __x86_64__
    add(filter, (struct sock_filter)BPF_JUMP(BPF_JMP | BPF_JGE | BPF_K, kX32Calls, 0, 1));
    answer(filter, SECCOMP_RET_ERRNO | EPERM);
#endif
    // Signals through descriptors need no number; whoever uses them can do without.
    unlessEqual(filter, SYS_pidfd_send_signal);
    answer(filter, SECCOMP_RET_ERRNO | ENOSYS);
}

bool guardAgainstSignals(pid_t one, pid_t other) {
    const pid_t spared[] = {-1, one, other, -getpgid(one), -getpgid(other)};
    const unsigned char count = sizeof spared / sizeof spared[0];
    Filter filter = {.count = 0};
    addFrame(&filter);
    for (size_t i = 0; i < sizeof kFirst / sizeof kFirst[0]; ++i)
        protect(&filter, kFirst[i], 0, spared, count);
    protect(&filter, SYS_ptrace, 1, spared, count);
    answer(&filter, SECCOMP_RET_ALLOW);
    struct sock_fprog program = {filter.count, filter.lines};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program, 0, 0) == 0;
}

#else

bool guardAgainstSignals(pid_t one, pid_t other) {
    (void)one;
    (void)other;
    return false;
}

#endif
