// The messages of readers.

#include "files/readLog.h"

#include <OpenSG/OSGLog.h>

namespace osg::files {

namespace {

/// More warnings than this help nobody and are counted only.
constexpr std::size_t kMostWarnings = 100;

/// Names out of damaged files may be anything: a message stays one line of readable length.
std::string oneLine(std::string text) {
    constexpr std::size_t longest = 500;
    if (text.size() > longest) text = text.substr(0, longest) + "...";
    for (char& c : text)
        if (static_cast<unsigned char>(c) < 32 || c == 127) c = '?';
    return text;
}

} // namespace

bool ReadLog::isFull() const {
    return _warnings.size() == kMostWarnings;
}

void ReadLog::warnOnce(const std::string& kind, const std::string& place, const std::string& text) {
    if (_told.count(kind) != 0) return;
    if (isFull()) return countUntold();
    _told.insert(kind);
    _warnings.push_back(oneLine(_fileName + (place.empty() ? "" : ", ") + place + ": " + text));
}

void ReadLog::succeed() {
    for (const std::string& warning : _warnings)
        SWARNING << warning << std::endl;
    if (_untold > 0)
        SWARNING << _fileName << ": " << _untold << " more warnings of this sort" << std::endl;
}

void ReadLog::fail(const std::string& place, const std::string& reason) {
    SWARNING << oneLine("Could not read " + _fileName + (place.empty() ? "" : ", ") + place + ": " +
                        reason)
             << std::endl;
}

} // namespace osg::files
