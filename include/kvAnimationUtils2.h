#pragma once

#include <kvOpenSGAnimationsApi.h>

#include <OpenSG/OSGConfig.h>

#include <OpenSG/OSGFieldContainerPtr.h>
#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGVector.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace osg {
class AnimationCurve;
} // namespace osg

/// @file
/// The binding of a curve to one scalar of the scene, and everything that is done with bindings:
/// finding them, reading and writing the scene through them, and the list of attribute names that
/// may be animated.

/// Bindings of curves to the scene graph. All members are static; there is nothing to construct.
///
/// A binding (AnimationField) names one field container by its id, one field of it and one number
/// within that field. Bindings are made by field discovery (getAnimationFields), from a curve's
/// attribute name (createAnimationField) or by hand; they are written with setRealFieldValue and
/// read with getRealFieldValue. The container may be destroyed at any time: a binding holds only
/// its id, and a write or read through a stale binding does nothing.
///
/// Nothing here reports errors. What cannot be read is 0, what cannot be written is skipped.
/// Everything runs on the calling thread, which must be the one that owns the scene graph.
class KV_ANIMATIONS_API kvAnimationUtils2 {
  public:
    /// What the host may want to show beside a binding. Filled by field discovery.
    struct MetaInfo {
        std::string nodeName;     ///< Name of the bound node, empty when it has none.
        std::string coreTypeName; ///< OpenSG type name of the node's core, empty without a core.
    };

    /// The binding of a curve to one scalar of one field container, with the last value computed
    /// for it. A plain value: copies are independent, and a copy allocates nothing as long as the
    /// two names are short, since one is made per curve and tick.
    struct AnimationField {
        /// The node whose field (or whose core's, material's or attachment's field) is animated.
        /// Not counted; may be stale. Nothing here dereferences it.
        osg::NodePtr node;

        /// Id of the container that holds the field: the node itself or an object reached from it.
        /// 0 binds to nothing.
        std::uint32_t fcId = 0;

        /// OpenSG type id of the node's core when the binding was discovered, 0 otherwise. Only
        /// meaningful in this process.
        std::uint32_t coreTypeId = 0;

        /// The binding's own name: the field name followed by the letter of the component, or one
        /// of the special quantities (see setRealFieldValue).
        std::string fieldName = "unknown";

        /// The field's name as the type of the container gives it, for example "translation".
        std::string globalFieldName = "unknown";

        /// Last value computed for the binding. Angles and the field of view are in degrees.
        float value = 0.0F;

        /// Which number of the field the binding drives, from 0. A matrix counts row by row, a
        /// field of many values counts through all numbers of all its elements.
        std::uint16_t valuePosition = 0;

        /// How many numbers the field had when the binding was made; 0 when that is not known.
        std::uint16_t componentCount = 0;

        /// The value still has to be written. Kept for the host; setRealFieldValue ignores it.
        bool dirty = true;

        /// Names to show, shared by all bindings of one discovery and never changed; null when
        /// there are none.
        std::shared_ptr<const MetaInfo> metaInfo;
    };

    kvAnimationUtils2() = delete;

    /// @name The registry of attribute names that may be animated
    /// Process-wide and empty at first; the host fills it. Names are compared byte by byte.
    /// @{

    /// Whether \p name is registered.
    static bool isAnimationAttribute(const std::string& name);

    /// Registers \p name at the end of the list; a name already there stays where it is.
    static void addAnimationAttribute(std::string name);

    /// Registers every piece of a list separated by commas. Pieces are not trimmed and may be
    /// empty: "a, b" registers "a" and " b", "a," registers "a" and "", and an empty list
    /// registers "".
    static void addAnimationAttributes(std::string list);

    /// Forgets \p name; nothing happens when it is not registered.
    static void subAnimationAttribute(const std::string& name);
    /// @}

    /// The editor colour of a curve that animates the attribute \p name: red, green and blue from
    /// 0 to 255. Only the last character counts: R or X is red, G or Y green, B or Z blue, A, I or
    /// W yellow; everything else, the empty name included, is orange.
    static osg::Vec3f getCurveColor(std::string name);

    /// The state of a boolean field for the curve value \p value: true from 0.5 upward. NaN is
    /// false.
    static bool floatToBool(float value);

    /// Writes id, names, value, position and dirty flag of \p field to standard output.
    static void printAnimationFieldInfo(const AnimationField& field);

    /// The current value of the scalar that \p field is bound to, 0 when there is none.
    ///
    /// A field named AnimationField::globalFieldName is preferred; only when the container has no
    /// such field is AnimationField::fieldName looked up among the special quantities (see
    /// setRealFieldValue). A field named "fieldOfView" is stored in radians and read in degrees.
    /// Booleans read 1 or 0.
    static float getRealFieldValue(const AnimationField& field);

    /// Writes AnimationField::value to the scalar that \p field is bound to.
    ///
    /// Both ways in are used, one after the other: first every field named
    /// AnimationField::globalFieldName, then the special quantity named AnimationField::fieldName.
    /// A binding that names a field and a special quantity is therefore written twice.
    /// - Numbers: only the one component changes. Integers are rounded half away from zero and
    ///   clamped to their type, and a NaN leaves them alone. Booleans are true from 0.5 upward.
    ///   "fieldOfView" is given in degrees and stored in radians. One begin and end of an edit with
    ///   the field's mask surrounds each field written; a position past the last number writes
    ///   nothing and makes no edit.
    /// - A viewpoint camera (a camera setting that stands for the viewer's own camera) is not
    ///   written: component AnimationField::valuePosition of the host's "from", "at" or "up" is.
    ///   Any other camera setting is written, and when "from", "at" or "up" changed it is handed to
    ///   the host.
    /// - Special quantities of a node: "rotationX", "rotationY", "rotationZ" (degrees; the other
    ///   two angles are kept as the node's transform attachment has them) and "visible".
    /// - Special quantities of a camera setting: "fStop", "focalLength", and "height", "distance",
    ///   "turnTableAngle", after which the camera is handed to the host.
    static void setRealFieldValue(const AnimationField& field);

    /// The bindings of \p container, one for every number that can be animated, in the order of the
    /// fields and within a field of its components.
    ///
    /// A field counts when its name is registered (see addAnimationAttribute); of an uber material
    /// the fields that are its parameters count instead. Colours get the letters R, G, B, A,
    /// vectors and points X, Y, Z, W, colour parameters of uber materials R, G, B, I; fields with
    /// exactly one number keep their name; every other field is left out.
    ///
    /// @param node       stored in the bindings; may be null.
    /// @param container  the node itself, its core, its material or an attachment; null gives an
    ///                   empty list.
    static std::vector<AnimationField> getAnimationFields(const osg::NodePtr& node,
                                                          const osg::FieldContainerPtr& container);

    /// The bindings of the quantities that are no fields: distance, height, turnTableAngle, fStop
    /// and focalLength, in this order, of a node whose core is a camera setting. Other nodes, a
    /// node without a core and null have none. The registry is not asked.
    static std::vector<AnimationField> getSpecialAnimationFields(const osg::NodePtr& node);

    /// Binds \p curve by the name of its attribute, starting from its node: translate, scale,
    /// rotate and eulerR attributes bind to the node's transform, "visible" to the node, the lens
    /// and orbit quantities to the camera setting, and any other name to the first of the node's
    /// core, the node, its material and its attachments that has a field of that name, with or
    /// without a component letter at the end. What fits nowhere is left unbound: names "unknown",
    /// id 0. Null does nothing.
    static void createAnimationField(kvAnimationCurve* curve);

    /// Binds \p curve as it was bound when \p container was saved. Container ids do not outlive the
    /// process, so the saved one is only kept when it still names something that belongs to the
    /// bound node and has the field; otherwise it is found again from that node, and becomes 0 when
    /// nothing there fits. Curves saved without a binding are bound by their attribute. Null for
    /// either does nothing.
    static void
    createAnimationField(const osg::FCPtr<osg::FieldContainerPtr, osg::AnimationCurve>& container,
                         kvAnimationCurve* curve);

    /// The names to show for \p node; both empty for null.
    static MetaInfo getMetaInfo(const osg::NodePtr& node);

    /// The OpenSG type id of the core of \p node, 0 for null and without a core.
    static std::uint32_t extractCoreTypeId(const osg::NodePtr& node);

  private:
    friend struct kvTestAccess<kvAnimationUtils2>;

    /// The registered names in order of registration. Built on first use, so that a host's global
    /// objects may register names before or after the library's own globals exist.
    static std::vector<std::string>& _attributes();
};
