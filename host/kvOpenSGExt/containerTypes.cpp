// The one place that mentions every container type of this library. Programs link it by name (see
// the build files), and with it the types, which register themselves when the program or library is
// loaded.
#include "OSGAnimationAttachment.h"
#include "OSGAnimAttachment.h"
#include "OSGAnimBlock.h"
#include "OSGAnimClip.h"
#include "OSGAnimCurve.h"
#include "OSGAnimNode.h"
#include "OSGCameraSetting.h"
#include "OSGLightGeoAttachment.h"
#include "OSGTransform3D.h"
#include "OSGTransformAttachment.h"

extern "C" KV_OPENSG_EXT_API int kvOpenSGExtTypes();

/// How many container types this library registers.
int kvOpenSGExtTypes() {
    // Naming the types links them. They are looked at through volatile pointers, or an optimiser
    // would see what comes of it and leave the names out.
    const osg::FieldContainerType* const volatile types[] = {
        &osg::AnimationAttachment::getClassType(),
        &osg::AnimationClip::getClassType(),
        &osg::AnimationTrack::getClassType(),
        &osg::AnimationBlock::getClassType(),
        &osg::AnimationCurve::getClassType(),
        &osg::AnimationControlPoint::getClassType(),
        &osg::CameraSetting::getClassType(),
        &osg::LightGeoAttachment::getClassType(),
        &osg::AnimAttachment::getClassType(),
        &osg::AnimBlock::getClassType(),
        &osg::AnimClip::getClassType(),
        &osg::AnimCurve::getClassType(),
        &osg::AnimNode::getClassType(),
        &osg::AnimObject::getClassType(),
        &osg::Transform3D::getClassType(),
        &osg::TransformAttachment::getClassType()};
    int count = 0;
    for (const osg::FieldContainerType* const type : types)
        if (type != nullptr) ++count;
    return count;
}
