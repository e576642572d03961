// Messages from the library to its host.
#include "kvOpenSGUtils.h"

#include <utility>

namespace {

// Reached through functions, so that a host's global objects may call before or after this
// library's own statics are there.
std::deque<kvOpenSGUtils::Call>& logOfCalls() {
    static std::deque<kvOpenSGUtils::Call> log;
    return log;
}

kvOpenSGUtils::Handler& installedHandler() {
    static kvOpenSGUtils::Handler handler;
    return handler;
}

} // namespace

void kvOpenSGUtils::call(const std::string& name, const kvMessage& message, int flags) {
    std::deque<Call>& log = logOfCalls();
    if (log.size() >= kLogLength) log.pop_front();
    log.push_back(Call{name, message, flags});
    // A copy, because the handler may install another one while it runs.
    const Handler handler = installedHandler();
    if (handler) handler(name, message, flags);
}

kvOpenSGUtils::Handler kvOpenSGUtils::setHandler(Handler handler) {
    std::swap(installedHandler(), handler);
    return handler;
}

const std::deque<kvOpenSGUtils::Call>& kvOpenSGUtils::getLog() {
    return logOfCalls();
}

void kvOpenSGUtils::clearLog() {
    logOfCalls().clear();
}
