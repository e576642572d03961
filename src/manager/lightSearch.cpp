// Finding the light that a light geometry stands for. The geometry that a host draws for a light
// hangs two levels below the light's beacon, so the light is the one whose beacon is the geometry's
// grandparent. The search leaves its result in a static slot and a search that fails leaves the
// last result there on purpose: it is only meant to be used directly after a search that must
// succeed.

#include <OpenSG/OSGConfig.h>

#include <kvAnimationManager2.h>

#include "keys/sceneNodes.h"

#include <OpenSG/OSGDirectionalLight.h>
#include <OpenSG/OSGGeometry.h>
#include <OpenSG/OSGLight.h>
#include <OpenSG/OSGPointLight.h>
#include <OpenSG/OSGSpotLight.h>

#include <kvLights.h>
#include <OSGLightGeoAttachment.h>

namespace {

bool isLightGeometry(const osg::NodePtr& node) {
    if (node == osg::NullFC) return false;
    const osg::NodeCorePtr core = node->getCore();
    if (core == osg::NullFC || !core->getType().isDerivedFrom(osg::Geometry::getClassType()))
        return false;
    const osg::LightGeoAttachmentPtr mark = osg::LightGeoAttachmentPtr::dcast(
        node->findAttachment(osg::LightGeoAttachment::getClassType()));
    return mark != osg::NullFC && mark->getIsLightGeometry();
}

/// The id of the light core's beacon when the core is of the type that the host calls it, else 0.
template <class LightTypePtr>
std::uint32_t beaconIdOf(const osg::NodeCorePtr& core) {
    const LightTypePtr light = LightTypePtr::dcast(core);
    if (light == osg::NullFC) return 0;
    return kv::detail::idOf(light->getBeacon());
}

std::uint32_t beaconIdOfLight(const osg::NodePtr& node) {
    if (kvLights::isSpotLight(node)) return beaconIdOf<osg::SpotLightPtr>(node->getCore());
    if (kvLights::isPointLight(node)) return beaconIdOf<osg::PointLightPtr>(node->getCore());
    if (kvLights::isDirectionalLight(node))
        return beaconIdOf<osg::DirectionalLightPtr>(node->getCore());
    return 0;
}

} // namespace

osg::NodePtr kvAnimationManager2::resolveLightNode(const osg::NodePtr& node, osg::NodePtr root) {
    if (!isLightGeometry(node)) return osg::NullFC;
    const osg::NodePtr parent = node->getParent();
    if (parent == osg::NullFC) return osg::NullFC;

    _beacon = parent->getParent();
    _beaconId = kv::detail::idOf(_beacon);
    if (root != osg::NullFC) {
        osg::traverse(
            root,
            osg::osgTypedFunctionFunctor1CPtrRef<osg::Action::ResultE, osg::NodePtr>(
                [](osg::NodePtr& visited) -> osg::Action::ResultE { return findLight(visited); }));
    }
    // The light may be from an earlier search and destroyed since: then there is nothing to return.
    return kv::detail::nodeById(_appropriateLightId);
}

osg::Action::ResultE kvAnimationManager2::findLight(const osg::NodePtr& node) {
    if (node == osg::NullFC || node->getCore() == osg::NullFC) return osg::Action::Continue;
    if (!node->getActive()) return osg::Action::Skip;
    if (!kvLights::isLight(node)) return osg::Action::Continue;

    const std::uint32_t beaconId = beaconIdOfLight(node);
    if (beaconId == 0 || beaconId != _beaconId) return osg::Action::Continue;
    _appropriateLight = node;
    _appropriateLightId = kv::detail::idOf(node);
    return osg::Action::Quit;
}
