// Calls that this host receives.
#include "kvOpenSGUtils.h"

namespace {

std::string last;

} // namespace

void kvOpenSGUtils::call(const std::string& name, const kvMessage& message, int) {
    last = name + " " + message.name();
}

std::string kvOpenSGUtils::lastCall() {
    return last;
}
