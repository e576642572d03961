#pragma once

#include <kvAnimationConverter.h>

// The single steps of the conversion, one of which nothing else reaches.
template <>
struct kvTestAccess<kvAnimationConverter> {
    using C = kvAnimationConverter;

    static void convertBlock(const C::BlockPtr& stored, const osg::NodePtr& node) {
        C::convertBlock(stored, node);
    }
    static void convertCurve(const C::CurvePtr& stored, const C::AnimNodePtr& curveNode) {
        C::convertCurve(stored, curveNode);
    }
    static void convertPoint(const C::ControlPointPtr& stored, const C::AnimCurvePtr& curve) {
        C::convertPoint(stored, curve);
    }
    static C::AnimNodePtr convertClip(const C::ClipPtr& stored) { return C::convertClip(stored); }
};
