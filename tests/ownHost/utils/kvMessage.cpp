// This host's own messages.
#include "kvMessage.h"

namespace {

int count = 0;

} // namespace

void kvMessage::set(const std::string& name, const boost::any& value) {
    ++count;
    _name = name;
    _value = value;
}

int kvMessage::filled() {
    return count;
}
