#pragma once

// What every test of the transport needs: its whole state as text, and a transport in which no
// member has the value that an operation would give it.

#include "playback/playbackFixture.h"
#include "playback/playedValues.h"
#include "support/access/kvAnimationController2.h"

#include <map>
#include <sstream>
#include <string>

namespace kv::test {

using Changes = std::map<std::string, std::string>; ///< values by the names of members

template <class T>
std::string text(const T& value) {
    std::ostringstream out;
    out.precision(17);
    out << value;
    return out.str();
}

inline std::string text(bool value) {
    return value ? "true" : "false";
}
inline std::string text(kvAnimationController2::PlayType value) {
    return text(static_cast<int>(value));
}
inline std::string text(const osg::NodePtr& node) {
    return node == osg::NullFC ? "null" : text(osg::getContainerId(node));
}

// Every static member of the transport, and the one setting of the manager that it writes.
inline Changes state() {
    using Access = kvTestAccess<kvAnimationController2>;
    return {
        {"am", text(static_cast<const void*>(Access::am()))},
        {"blocking", text(Access::blocking())},
        {"minFrame", text(Access::minFrame())},
        {"maxFrame", text(Access::maxFrame())},
        {"startFrame", text(Access::startFrame())},
        {"endFrame", text(Access::endFrame())},
        {"actualFrame", text(Access::actualFrame())},
        {"values", text(Access::values().all().size())},
        {"playingBlock", text(static_cast<const void*>(Access::playingBlock()))},
        {"playingClip", text(static_cast<const void*>(Access::playingClip()))},
        {"playingSequence", text(static_cast<const void*>(Access::playingSequence()))},
        {"node", text(Access::node())},
        {"playing", text(Access::playing())},
        {"pausing", text(Access::pausing())},
        {"repeating", text(Access::repeating())},
        {"ffw", text(Access::ffw())},
        {"fbw", text(Access::fbw())},
        {"reverse", text(Access::reverse())},
        {"connectedGlobalSlider", text(Access::connectedGlobalSlider())},
        {"ignoreActivity", text(Access::ignoreActivity())},
        {"oldFrame", text(Access::oldFrame())},
        {"duration", text(Access::duration())},
        {"fps", text(Access::fps())},
        {"simTime", text(Access::simTime())},
        {"startTime", text(Access::startTime())},
        {"timeDiff", text(Access::timeDiff())},
        {"pt", text(Access::pt())},
        {"manager.actualFrame", text(kvAnimationManager2::getActualFrame())},
    };
}

// What `operation` changes, by the name of the member.
template <class Operation>
Changes changesOf(Operation operation) {
    const Changes before = state();
    operation();
    Changes after = state();
    for (const auto& [name, value] : before) {
        if (after[name] == value) after.erase(name);
    }
    return after;
}

class Transport : public PlaybackFixture {
  public:
    using Controller = kvAnimationController2;
    using Access = kvTestAccess<kvAnimationController2>;

    // No member has the value that an operation would give it, so that every write shows.
    Transport() {
        setTime(7.5);
        Access::minFrame() = 901.0F;
        Access::maxFrame() = 902.0F;
        Access::startFrame() = 903.0F;
        Access::endFrame() = 904.0F;
        Access::actualFrame() = 905.0F;
        Access::oldFrame() = 906.0F;
        Access::duration() = 907.0F;
        Access::simTime() = 908.0;
        Access::startTime() = 909.0;
        Access::timeDiff() = 910.0;
        Access::pt() = static_cast<Controller::PlayType>(77);
        kvAnimationManager2::setActualFrame(33.0F);
        Access::values().replace().resize(9);
    }

    static std::string address(const void* pointer) { return text(pointer); }

    // The other value of every flag, so that an operation which clears too much is seen.
    static void raiseAllFlags() {
        Access::blocking() = Access::playing() = Access::pausing() = Access::repeating() = true;
        Access::ffw() = Access::fbw() = Access::reverse() = true;
        Access::connectedGlobalSlider() = Access::ignoreActivity() = true;
    }
};

} // namespace kv::test
