// What is left to do when somebody else's reader crashes over a damaged file: say so.
#include "readerGuard.h"

#include <unistd.h>

#include <array>
#include <csignal>
#include <cstddef>

namespace kvanim {
namespace {

constexpr std::array<int, 5> kCrashes{SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGABRT};
constexpr std::size_t kStackSize = 65536;

// Made beforehand: a handler may neither allocate nor print as usual.
std::string lastWords;
std::string fileToRemove;
std::array<struct sigaction, kCrashes.size()> before;
std::array<std::byte, kStackSize> stack;
stack_t stackBefore;

void giveUp(int) {
    if (!fileToRemove.empty()) unlink(fileToRemove.c_str());
    if (write(STDERR_FILENO, lastWords.data(), lastWords.size()) < 0) _exit(1);
    _exit(1);
}

} // namespace

ReaderGuard::ReaderGuard(const std::string& file, const std::string& leftover) {
    lastWords = "kvanim: " + file +
                ": is not a readable scene: the reader of the installed OpenSG crashed over it\n";
    fileToRemove = leftover;
    // A stack of its own, as the crash may be the end of the usual one.
    stack_t own{};
    own.ss_sp = stack.data();
    own.ss_size = stack.size();
    sigaltstack(&own, &stackBefore);
    struct sigaction action {};
    action.sa_handler = giveUp;
    action.sa_flags = SA_ONSTACK;
    sigemptyset(&action.sa_mask);
    for (std::size_t i = 0; i < kCrashes.size(); ++i)
        sigaction(kCrashes[i], &action, &before[i]);
}

ReaderGuard::~ReaderGuard() {
    for (std::size_t i = 0; i < kCrashes.size(); ++i)
        sigaction(kCrashes[i], &before[i], nullptr);
    sigaltstack(&stackBefore, nullptr);
}

} // namespace kvanim
