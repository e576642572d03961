// A message with named values.
#include "kvMessage.h"

#include <algorithm>

namespace {

template <class Entries>
auto entryOf(Entries& entries, const std::string& name) {
    return std::find_if(entries.begin(), entries.end(),
                        [&](const kvMessage::Entry& entry) { return entry.first == name; });
}

} // namespace

boost::any& kvMessage::operator[](const std::string& name) {
    const auto found = entryOf(_entries, name);
    if (found != _entries.end()) return found->second;
    _entries.emplace_back(name, boost::any());
    return _entries.back().second;
}

void kvMessage::set(const std::string& name, const boost::any& value) {
    (*this)[name] = value;
}

const boost::any& kvMessage::get(const std::string& name) const {
    static const boost::any kNone;
    const auto found = entryOf(_entries, name);
    return found != _entries.end() ? found->second : kNone;
}

bool kvMessage::has(const std::string& name) const {
    return entryOf(_entries, name) != _entries.end();
}

bool kvMessage::remove(const std::string& name) {
    const auto found = entryOf(_entries, name);
    if (found == _entries.end()) return false;
    _entries.erase(found);
    return true;
}
