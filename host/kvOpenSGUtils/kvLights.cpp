// What kind of light a node is.
#include "kvLights.h"

#include <OpenSG/OSGDirectionalLight.h>
#include <OpenSG/OSGLight.h>
#include <OpenSG/OSGPointLight.h>
#include <OpenSG/OSGSpotLight.h>

namespace {

bool hasCoreOf(const osg::NodePtr& node, const osg::FieldContainerType& type) {
    if (node == osg::NullFC) return false;
    const osg::NodeCorePtr core = node->getCore();
    return core != osg::NullFC && core->getType().isDerivedFrom(type);
}

} // namespace

bool kvLights::isLight(const osg::NodePtr& node) {
    return hasCoreOf(node, osg::Light::getClassType());
}

bool kvLights::isSpotLight(const osg::NodePtr& node) {
    return hasCoreOf(node, osg::SpotLight::getClassType());
}

bool kvLights::isPointLight(const osg::NodePtr& node) {
    return hasCoreOf(node, osg::PointLight::getClassType()) && !isSpotLight(node);
}

bool kvLights::isDirectionalLight(const osg::NodePtr& node) {
    return hasCoreOf(node, osg::DirectionalLight::getClassType());
}
