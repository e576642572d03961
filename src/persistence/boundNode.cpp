// Finds out whether the node of a binding still exists, without touching it.

#include "persistence/boundNode.h"

#include <OpenSG/OSGAttachment.h>
#include <OpenSG/OSGFieldContainerFactory.h>
#include <OpenSG/OSGLight.h>
#include <OpenSG/OSGNodeCore.h>

namespace kv {
namespace detail {

namespace {

using osg::NodePtr;

bool isParentOfCore(const NodePtr& node, const osg::NodeCorePtr& core) {
    const osg::MFNodePtr& parents = core->getParents();
    for (osg::UInt32 i = 0; i < parents.getSize(); ++i) {
        if (parents[i] == node) return true;
    }
    return false;
}

// The container itself, or something that hangs on the node as its core or attachment, or as an
// attachment of its core.
bool isCarriedBy(const NodePtr& node, const osg::FieldContainerPtr& container) {
    if (container == osg::NullFC) return false;
    if (container == node) return true;
    const osg::NodeCorePtr core = osg::NodeCorePtr::dcast(container);
    if (core != osg::NullFC) return isParentOfCore(node, core);
    const osg::AttachmentPtr attachment = osg::AttachmentPtr::dcast(container);
    if (attachment == osg::NullFC) return false;
    const osg::MFFieldContainerPtr& owners = attachment->getParents();
    for (osg::UInt32 i = 0; i < owners.getSize(); ++i) {
        if (owners[i] == node) return true;
        const osg::NodeCorePtr owner = osg::NodeCorePtr::dcast(owners[i]);
        if (owner != osg::NullFC && isParentOfCore(node, owner)) return true;
    }
    return false;
}

bool isBeaconOf(const NodePtr& node, const NodePtr& lightNode) {
    const osg::LightPtr light = osg::LightPtr::dcast(lightNode->getCore());
    return light != osg::NullFC && light->getBeacon() == node;
}

bool isChildOf(const NodePtr& node, const NodePtr& parent) {
    for (osg::UInt32 i = 0; i < parent->getNChildren(); ++i) {
        if (parent->getChild(i) == node) return true;
    }
    return false;
}

} // namespace

NodePtr boundNode(const kvAnimationUtils2::AnimationField& field, const kvAnimationCurve& curve) {
    const NodePtr& wanted = field.node;
    if (wanted == osg::NullFC) return osg::NullFC;
    const NodePtr own = curve.getAppropriateNode();
    if (wanted == own) return own;
    if (field.fcId != 0 &&
        isCarriedBy(wanted, osg::FieldContainerFactory::the()->getContainer(field.fcId))) {
        return wanted;
    }
    if (own == osg::NullFC) return osg::NullFC;
    const bool related =
        wanted == own->getParent() || isBeaconOf(wanted, own) || isChildOf(wanted, own);
    return related ? wanted : NodePtr(osg::NullFC);
}

} // namespace detail
} // namespace kv
