#pragma once

/// @file
/// One animated scalar channel.

#include <OpenSG/OSGConfig.h>

#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGVector.h>

#include <kvAnimationUtils2.h>
#include <kvControlPointManager.h>
#include <kvOpenSGAnimationsApi.h>

#include <cstdint>
#include <string>
#include <vector>

namespace kv::detail {
struct CurveBinding;
} // namespace kv::detail

/// A list of keys together with what it animates: the attribute's name, the scene-graph node, the
/// binding to one scalar of one field, and how the curve editor shows it.
///
/// A curve holds no reference to its node. It keeps the node's field-container id and looks the
/// node up whenever it is asked for, so a destroyed node is simply gone.
///
/// New curves take consecutive ids from a counter of the class. A copy keeps the id of its source.
class KV_ANIMATIONS_API kvAnimationCurve : public kvControlPointManager {
  public:
    /// A curve named "init" without keys, node and binding.
    kvAnimationCurve();

    /// A curve for the attribute `name`, in the colour that belongs to the name.
    explicit kvAnimationCurve(std::string name);

    /// @{
    /// Copies everything, the id included, and draws no id. Links are those of the source; see
    /// kvControlPointManager.
    kvAnimationCurve(const kvAnimationCurve& other);
    kvAnimationCurve& operator=(const kvAnimationCurve& other);
    /// @}
    ~kvAnimationCurve();

    using kvControlPointManager::isSelected;

    /// @name Attribute, type, display
    /// @{

    /// Sets the animated attribute and, each time, the colour that belongs to its name, replacing
    /// one that was chosen by hand.
    void setAnimatedAttribute(std::string newName);
    std::string getAnimatedAttribute() const { return name; }

    /// A label the curve does not interpret. The pointer is kept, not the text: the caller keeps
    /// the text alive.
    void setCurveType(const char* type) { curveType = type; }
    const char* getCurveType() const { return curveType; }

    /// Red, green and blue, 0 to 255 each; not clamped.
    void setColor(float r, float g, float b) { color.setValues(r, g, b); }
    void setColor(const osg::Vector<float, 3>& rgb) { color = rgb; }
    osg::Vector<float, 3> getColor() const { return color; }

    void setVisible(bool show) { visible = show; }
    bool isVisible() const { return visible; }

    /// The curve's own flag in the editor. It is independent of the selection of its keys.
    void setSelected(bool isNowSelected) { selected = isNowSelected; }
    bool isSelected() const { return selected; }

    /// A mark for the host. Recomputing handles does not consult it.
    void setAutocomputeTangents(bool automatic) { autocomputeTangents = automatic; }
    bool getAutocomputeTangents() const { return autocomputeTangents; }

    void setIsBlockCurve(bool inBlock) { blockCurve = inBlock; }
    bool isBlockCurve() const { return blockCurve; }

    void setAnimationDuration(double duration) { animationDuration = duration; }
    double getAnimationDuration() const { return animationDuration; }

    /// Keeps the low 32 bits.
    void setId(unsigned long long newId) { id = static_cast<std::uint32_t>(newId); }
    unsigned int getId() const { return id; }

    /// The host-side block the curve belongs to. Keeps the low 32 bits.
    void setAppBlockId(unsigned long long blockId) {
        appBlockId = static_cast<std::uint32_t>(blockId);
    }
    unsigned int getAppBlockId() const { return appBlockId; }

    /// @}
    /// @name Node and field
    /// @{

    /// Remembers the node by its id; a null node clears it.
    void setAppropriateNode(const osg::NodePtr& node);

    /// The node, or null when none was set, it has been destroyed, or the id names a container that
    /// is not a node.
    osg::NodePtr getAppropriateNode() const;

    void setAnimationField(const kvAnimationUtils2::AnimationField& field);
    kvAnimationUtils2::AnimationField getAnimationField() const { return animationField; }

    /// @}
    /// @name Keys
    /// @{

    /// Same as findCP(): the first key with this id, which becomes the current key, or null.
    kvControlPoint* getControlPoint(int keyId) { return findCP(keyId); }

    /// Inserts a stored key. It takes the list's counter as id and replaces a key at the same
    /// frame, and it and its neighbours are recomputed by their types: the handles given survive
    /// only with type kvControlPoint::User. Draws one id, which no key keeps.
    void importControlPoint(float x, float y, float inX, float inY, float outX, float outY,
                            int tangentType);

    /// Sets the attribute's name with its colour, and makes `keys` the keys of the curve, linked in
    /// the order given.
    void set(std::string newName, const std::vector<kvControlPoint>& keys);

    /// @}
    /// @name Editing the whole curve
    /// Frames change, values do not. @{

    /// Moves a key to frame `x` and value `y` and sorts. The key that then lies at the address `cp`
    /// decides what follows: for types other than User and Collapsed it and its neighbours are
    /// recomputed, else its handles become (x, y) plus the two handle distances that `cp` had. Both
    /// are added, so an incoming handle ends behind the key; that is deliberate. Null is ignored.
    void moveCPTo(kvControlPoint* cp, float x, float y);

    /// Scales keys and handles in time so that the first key lies at `newStart` and the last stays.
    /// In single precision; dividing by a range of 0 gives frames that are not finite.
    void stretchLeft(float newStart);

    /// Scales keys and handles in time so that the first key stays and the last lies at `newEnd`.
    void stretchRight(float newEnd);

    /// Mirrors the curve in time about its middle. Nothing for fewer than two keys.
    void flip();

    /// Prints every key with its handles, three lines a key, to standard output.
    void printInfo() const;

    /// @}

  protected:
    /// insertCP(kvControlPoint&) under the name that importers use.
    void addControlPoint(kvControlPoint& cp) { insertCP(cp); }

  private:
    friend class kvAnimationBlock;
    friend class kvAnimationManager2;
    friend struct kv::detail::CurveBinding;
    friend struct kvTestAccess<kvAnimationCurve>;

    class FrameChange;

    void predefinedColor();
    void stretch(float start, float span, float newSpan, float newStart);
    void shift(float delta);
    void moveSelectedCPs(float frame);
    static void carryHandles(kvControlPoint& cp, const kvControlPoint& before, float x, float y);

    static std::uint32_t _idCount;

    std::string name = "init";
    const char* curveType = "linear";
    bool autocomputeTangents = true;
    bool visible = true;
    bool selected = false;
    bool blockCurve = false;
    double animationDuration = 0.0;
    osg::Vector<float, 3> color = osg::Vector<float, 3>(234.0F, 134.0F, 47.0F);
    std::uint32_t appBlockId = 0;
    std::uint32_t id;
    std::uint32_t appropriateNodeId = 0;
    kvAnimationUtils2::AnimationField animationField;
};
