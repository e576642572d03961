#pragma once

/// @file
/// Names and transforms of nodes.

#include "kvOpenSGUtilsApi.h"

#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGNode.h>

#include <string>

/// Static operations on nodes. A null node is answered with nothing: empty name, zeros, no effect.
///
/// Transforms: the transform of a node is its own core when that is a Transform (ComponentTransform
/// and Transform3D included), else the core of its parent when that is one. Only one level up is
/// looked at. Each setter edits what it writes between beginEditCP and endEditCP.
class KV_OPENSG_UTILS_API kvNodeUtils {
  public:
    /// The name of a node; empty when it has none.
    static std::string getName(const osg::NodePtr& node);

    /// Names a node; an empty text takes the name away. With `utf8` the text is taken for UTF-8,
    /// and what is not becomes U+FFFD; without, the bytes are stored as they are.
    static void setName(const osg::NodePtr& node, const std::string& name, bool utf8 = true);

    /// Whether the name is UTF-8 beyond ASCII: at least one non-ASCII character, all well formed.
    static bool hasUtf8Name(const osg::NodePtr& node);

    /// The node that carries the transform of a node: itself, its parent, or null.
    static osg::NodePtr getTransformNode(const osg::NodePtr& node);

    /// @{
    /// The translation; false, and zeros, when there is no transform.
    static bool getTransformNodeTranslation(const osg::NodePtr& node, float& x, float& y, float& z);
    static void setTransformNodeTranslation(const osg::NodePtr& node, float x, float y, float z);
    /// @}

    /// The rotation in degrees: the angles of the node's TransformAttachment, without one those
    /// that the transform's rotation can be made from (order XYZ), without a transform zeros and
    /// false.
    static bool getTransformNodeRotation(const osg::NodePtr& node, float& x, float& y, float& z);

    /// Sets the rotation from angles in degrees.
    ///
    /// `order` is one of TransformAttachment::Order; any other number, -1 as a rule, keeps the
    /// order that is stored with the node or with the node of its transform, XYZ when none is: x
    /// turns first, the rotation is the product qz * qy * qx.
    ///
    /// The angles and the order are always kept in the TransformAttachment of `node`, which is made
    /// when there is none, because three angles cannot be read back from a rotation once it is set.
    /// A component transform gets the rotation in its field, a Transform3D the angles too; the
    /// matrix of a plain transform is composed anew with its translation and scale as they were.
    /// When the transform belongs to the parent, an attachment that the parent has already is kept
    /// in step; one with a Transform3D gets it anyway. A node without a transform gets the
    /// attachment only.
    static void setTransformNodeRotation(const osg::NodePtr& node, float x, float y, float z,
                                         int order = -1);

    /// @{
    /// The scale; false, and ones, when there is no transform.
    static bool getTransformNodeScale(const osg::NodePtr& node, float& x, float& y, float& z);
    static void setTransformNodeScale(const osg::NodePtr& node, float x, float y, float z);
    /// @}
};
