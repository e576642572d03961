#pragma once

#include <kvAnimationController2.h>

// The state of the transport, of which the interface shows only little.
template <>
struct kvTestAccess<kvAnimationController2> {
    using C = kvAnimationController2;

    static kvAnimationManager2*& am() { return C::_am; }
    static bool& blocking() { return C::_blocking; }
    static float& minFrame() { return C::_minFrame; }
    static float& maxFrame() { return C::_maxFrame; }
    static float& startFrame() { return C::_startFrame; }
    static float& endFrame() { return C::_endFrame; }
    static float& actualFrame() { return C::_actualFrame; }
    static kv::detail::PlayedValues& values() { return C::_values; }
    static kvAnimationBlock*& playingBlock() { return C::_playingBlock; }
    static kvAnimationClip*& playingClip() { return C::_playingClip; }
    static kvAnimationSequence2*& playingSequence() { return C::_playingSequence; }
    static osg::NodePtr& node() { return C::_node; }
    static bool& playing() { return C::_playing; }
    static bool& pausing() { return C::_pausing; }
    static bool& repeating() { return C::_repeating; }
    static bool& ffw() { return C::_ffw; }
    static bool& fbw() { return C::_fbw; }
    static bool& reverse() { return C::_reverse; }
    static bool& connectedGlobalSlider() { return C::_connectedGlobalSlider; }
    static bool& ignoreActivity() { return C::_ignoreActivity; }
    static float& oldFrame() { return C::_oldFrame; }
    static float& duration() { return C::_duration; }
    static float& fps() { return C::_fps; }
    static double& simTime() { return C::_simTime; }
    static double& startTime() { return C::_startTime; }
    static double& timeDiff() { return C::_timeDiff; }
    static C::PlayType& pt() { return C::_pt; }
};
