// Prints the filter of system calls that the sandbox gives to bubblewrap: calls that no program of the camera
// needs, and that lead an intruder to large parts of the host's kernel, fail with EPERM.
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sched.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <bit>
#include <cerrno>
#include <cstddef>
#include <vector>

namespace {

#if defined(__x86_64__)
constexpr unsigned kProcessor = AUDIT_ARCH_X86_64;
#elif defined(__aarch64__)
constexpr unsigned kProcessor = AUDIT_ARCH_AARCH64;
#else
#error "Add this processor."
#endif
static_assert(std::endian::native == std::endian::little, "the low half of an argument comes first");

constexpr unsigned kX32Calls = 0x40000000;  // the first number of another set of calls on x86-64

constexpr unsigned kRefused[] = {
    // In a namespace of its own a process has every privilege.
    SYS_unshare, SYS_setns,
    // file systems
    SYS_mount, SYS_umount2, SYS_pivot_root, SYS_open_tree, SYS_move_mount, SYS_fsopen, SYS_fsconfig,
    SYS_fsmount, SYS_fspick, SYS_name_to_handle_at, SYS_open_by_handle_at, SYS_quotactl, SYS_swapon,
    SYS_swapoff,
    // programs in the kernel, and memory and input that it shares
    SYS_bpf, SYS_perf_event_open, SYS_userfaultfd, SYS_io_uring_setup, SYS_io_uring_enter,
    SYS_io_uring_register, SYS_init_module, SYS_finit_module, SYS_delete_module, SYS_kexec_load,
    // keys, log and accounting, which have no namespace
    SYS_keyctl, SYS_add_key, SYS_request_key, SYS_syslog, SYS_acct};

constexpr unsigned kNamespaces =
    CLONE_NEWNS | CLONE_NEWCGROUP | CLONE_NEWUTS | CLONE_NEWIPC | CLONE_NEWUSER | CLONE_NEWPID | CLONE_NEWNET;

constexpr sock_filter load(std::size_t offset) {
  return BPF_STMT(BPF_LD | BPF_W | BPF_ABS, static_cast<unsigned>(offset));
}
constexpr sock_filter failWith(unsigned error) {
  return BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | error);
}
constexpr sock_filter kAllow = BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW);
// Goes on with the next instruction if the loaded value compares so with the number, else with the one after
// it.
constexpr sock_filter nextIf(unsigned comparison, unsigned number) {
  return BPF_JUMP(BPF_JMP | BPF_K | comparison, number, 0, 1);
}

std::vector<sock_filter> filter() {
  std::vector<sock_filter> program = {
      load(offsetof(seccomp_data, arch)), BPF_JUMP(BPF_JMP | BPF_K | BPF_JEQ, kProcessor, 1, 0),
      failWith(ENOSYS), load(offsetof(seccomp_data, nr)), nextIf(BPF_JGE, kX32Calls), failWith(ENOSYS),
      // Its flags are in memory, which a filter cannot read. The C library then uses clone.
      nextIf(BPF_JEQ, SYS_clone3), failWith(ENOSYS)};
  for (const unsigned call : kRefused)
    program.insert(program.end(), {nextIf(BPF_JEQ, call), failWith(EPERM)});
  program.insert(program.end(), {BPF_JUMP(BPF_JMP | BPF_K | BPF_JEQ, SYS_clone, 1, 0), kAllow,
                                 load(offsetof(seccomp_data, args)), nextIf(BPF_JSET, kNamespaces),
                                 failWith(EPERM), kAllow});
  return program;
}

}  // namespace

int main() {
  const std::vector<sock_filter> program = filter();
  const std::size_t bytes = program.size() * sizeof program[0];
  return write(STDOUT_FILENO, program.data(), bytes) == static_cast<ssize_t>(bytes) ? 0 : 1;
}
