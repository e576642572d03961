#pragma once

// What the tests see of the manager beyond its interface.

#include <kvAnimationManager2.h>

template <>
struct kvTestAccess<kvAnimationManager2> {
    using Manager = kvAnimationManager2;

    static Manager::NodeType nodeType(const osg::NodePtr& node) {
        return Manager::getNodeType(node);
    }
    static osg::Action::ResultE animationBlocks(const osg::NodePtr& node) {
        return Manager::getAnimationBlocks(node);
    }
    static kvAnimationCurve* findCurve(Manager& manager, unsigned long id) {
        return manager.findCurve(id);
    }
    static kvAnimationCurve* findCurve(Manager& manager, const std::string& attribute) {
        return manager.findCurve(attribute);
    }
    static kvAnimationBlock* findBlock(Manager& manager, const std::string& name, bool scene) {
        return manager.findBlock(name, scene);
    }
    static kvAnimationBlock* findBlock(Manager& manager, kvAnimationCurve* curve, bool scene) {
        return manager.findBlock(curve, scene);
    }
    static kvAnimationClip* findClip(Manager& manager, unsigned long id) {
        return manager.findClip(id);
    }
    static kvAnimationClip* findClip(Manager& manager, const std::string& name) {
        return manager.findClip(name);
    }
    static std::uint32_t& actualNode(Manager& manager) { return manager._actualNode; }

    /// Forgets what the last light search left.
    static void forgetLight() {
        Manager::_beacon = osg::NullFC;
        Manager::_appropriateLight = osg::NullFC;
        Manager::_beaconId = 0;
        Manager::_appropriateLightId = 0;
    }
    static void lookForBeacon(const osg::NodePtr& beacon) {
        Manager::_beacon = beacon;
        Manager::_beaconId = beacon == osg::NullFC ? 0 : osg::getContainerId(beacon);
    }
    static osg::NodePtr appropriateLight() { return Manager::_appropriateLight; }

    /// Every callback uninstalled, every setting as at start.
    static void resetHost() {
        Manager::_timeCB = nullptr;
        Manager::_gCamFAU = nullptr;
        Manager::_sCamFAU = nullptr;
        Manager::_gFOV = nullptr;
        Manager::_sFOV = nullptr;
        Manager::_gZUp = nullptr;
        Manager::_sZUp = nullptr;
        Manager::_seffc = nullptr;
        Manager::_updateNavigator = nullptr;
        Manager::_updateRender = nullptr;
        Manager::_actualFrame = 0.0F;
        Manager::_motionBlur = false;
        Manager::_mbSamples = 64;
        Manager::_mbShutterTime = 1.0F;
        Manager::_activeAnimWidget = Manager::CurveEditor;
        Manager::_mglwCam = osg::NullFC;
        Manager::_activeClip = nullptr;
    }
};
