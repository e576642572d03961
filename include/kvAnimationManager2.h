#pragma once

#include <kvAnimationUtils2.h>
#include <kvControlPoint.h>
#include <kvOpenSGAnimationsApi.h>

#include <OpenSG/OSGConfig.h>

#include <OpenSG/OSGAction.h>
#include <OpenSG/OSGCamera.h>
#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGVector.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

/// The registry of all animation objects, and everything that needs them all: identifiers, the
/// evaluation of a frame, the link to the scene graph, the host's callbacks and the curve editor's
/// operations.
///
/// One instance serves the whole process, `_the`; it exists before main() runs. Curves, blocks and
/// clips are registered by pointer. **The lists own nothing**: removing an object only takes it out
/// of a list, and whoever removes it owns it. Objects that the manager makes itself
/// (createAnimation, createBlock, createBlockCopy, newClip) come from `new` and belong to whoever
/// takes them out.
///
/// Objects are found by 32-bit id, by name or by pointer. Ids are not strictly unique (see
/// createUniqueId): look-ups return the first match, lists being walked from the front. Ids given
/// in wider types are cut to their low 32 bits. Wherever something is not found the answer is null,
/// and null arguments, null entries of the lists and objects that are not registered are passed
/// over in silence.
///
/// Everything here runs on the application's main thread and nothing may be re-entered: a host
/// callback must not change the lists that the running operation walks.
///
/// Frames are floats in the unit of the host's time line; colours, angles and distances are the
/// host's own units unless an operation says otherwise.
class KV_ANIMATIONS_API kvAnimationManager2 {
  public:
    /// One evaluated value: what a curve gives for one attribute of one node.
    struct AnimationMap {
        osg::NodePtr node;     ///< the curve's node; null when it no longer exists or is no node
        std::string attribute; ///< the curve's animated attribute
        float value = 0.0f;    ///< the value at the frame, never the no-value sentinel
    };

    /// What a node is, by the type name of its core.
    enum NodeType { Geometry = 1, Light = 2, Group = 3, Transform = 4, Other = 5 };

    /// The host's animation editors: which of them has the focus. The library only stores it.
    enum AnimationWidgetType { NoWidget = 0, CurveEditor = 1, ClipMaker = 2, TimeLine = 3 };

    /// @name Types of the host's callbacks
    /// The int of the camera callbacks selects a camera; the library always passes -1, the active
    /// one.
    /// @{
    using SimulationTimeCB = double (*)(); ///< seconds on the host's clock
    /// Fills in where the camera stands, what it looks at and its up direction.
    using GetFromAtUpCB = void (*)(int, osg::Pnt3f&, osg::Pnt3f&, osg::Vec3f&);
    /// Places the camera.
    using SetFromAtUpCB = void (*)(int, const osg::Pnt3f&, const osg::Pnt3f&, const osg::Vec3f&);
    using GetFovCB = float (*)();                    ///< the field of view, in the host's unit
    using SetFovCB = void (*)(float);                ///< sets the field of view, in the host's unit
    using GetZUpCB = bool (*)();                     ///< whether z is up
    using SetZUpCB = void (*)(bool);                 ///< sets whether z is up
    using ExecuteSequenceCB = void (*)(std::string); ///< runs a sequence item's text
    using UpdateCB = void (*)(bool);                 ///< asks for a new picture
    /// @}

    /// The manager of the process.
    static kvAnimationManager2 _the;
    /// Whether the host renders with motion blur; read and written by the host directly.
    static bool _motionBlur;
    /// The scene blocks: the blocks found on the scene graph by buildAnimationBlockList.
    static std::vector<kvAnimationBlock*> _animationBlocks;

    /// Empty lists, no actual node, dirty. The host uses `_the`; another instance shares its
    /// statics.
    kvAnimationManager2();
    /// Frees the lists, never the objects in them.
    ~kvAnimationManager2();
    kvAnimationManager2(const kvAnimationManager2&) = delete;
    kvAnimationManager2& operator=(const kvAnimationManager2&) = delete;

    /// @name Identifiers
    /// @{

    /// Draws a new identifier (0 to 3276700; two calls of std::rand) and remembers it for good.
    /// A collision with an earlier one is drawn over, but the colliding value is what is returned:
    /// ids are unique with high probability only.
    static unsigned long long createUniqueId();
    /// Whether `id` was ever handed out, all 64 bits compared; also when its object is gone.
    static bool checkId(unsigned long long id);
    /// @}

    /// @name Adding
    /// Each appends to the end of its list, then overwrites the object's id with a fresh one. Null
    /// is ignored and draws nothing. Nothing checks for duplicates.
    /// @{
    void addCurve(kvAnimationCurve* curve);          ///< to the curve list
    void addAnimationBlock(kvAnimationBlock* block); ///< to the block list
    void addClip(kvAnimationClip* clip);             ///< to the clip list
    /// The last entry of the curve list, null when it is empty.
    kvAnimationCurve* getLastInsertedCurve() const;
    /// The last entry of the block list, null when it is empty.
    kvAnimationBlock* getLastInsertedBlock() const;
    /// The last entry of the clip list, null when it is empty.
    kvAnimationClip* getLastInsertedClip() const;
    /// @}

    /// @name Removing
    /// Objects are unlinked, never deleted; their ids stay issued. Identity is the id, not the
    /// pointer: every curve and every clip with the id is removed, but only the first block.
    /// @{
    void subCurve(kvAnimationCurve* curve); ///< every curve with that curve's id
    void subCurve(unsigned long id);        ///< every curve with the id
    void subClip(kvAnimationClip* clip);    ///< every clip with that clip's id
    void subClip(unsigned long id);         ///< every clip with the id
    /// The first block with the id leaves the block list, then the first one leaves the scene
    /// blocks.
    /// With `inClips` it is also taken from the first clip that holds it, at any depth.
    void subAnimationBlock(kvAnimationBlock* block, bool inClips);
    /// The same by id.
    void subAnimationBlock(unsigned long id, bool inClips);
    /// Whether `seq` lies directly on a track of `clip`. Only answers: the clip is not changed
    /// (that is kvAnimationClip::subSequence). False for an item of a sub-clip and for nulls.
    bool subSequence(kvAnimationClip* clip, kvAnimationSequence2* seq);
    /// Asks every clip of the list in order, up to the first that holds the item directly.
    void subSequence(kvAnimationSequence2* seq);
    /// Always false.
    bool subSequenceFromTracks(kvAnimationClip* clip, kvAnimationSequence2* seq);
    /// Always false.
    bool getCurveVisibility(kvAnimationCurve* curve);
    /// Takes every curve without keys out of the curve list.
    void eraseEmptyCurves();
    /// Empties the curve list and the selected curve list.
    void clearCurveLists();
    void clearBlockList(); ///< empties the block list
    void clearClipList();  ///< empties the clip list; the active clip stays
    /// Empties the curve list, the selected curve list and the block list; with `all` also the clip
    /// list and the scene blocks. The active clip and the issued ids stay.
    void clear(bool all);
    /// @}

    /// @name The lists
    /// The lists themselves; pointers stay valid for the life of the manager.
    /// @{
    std::vector<kvAnimationCurve*>* getAnimCurves(); ///< the loose curves
    std::vector<kvAnimationBlock*>* getBlocks();     ///< the blocks that are not of the scene
    std::vector<kvAnimationClip*>* getClips();       ///< the clips on top
    /// The blocks found on the scene graph, which play globally.
    const std::vector<kvAnimationBlock*>& getSceneBlocks() const;
    /// @}

    /// @name Finding
    /// @{

    /// By id: the curve list, then the curves of the block list's blocks (not of scene blocks or
    /// clips).
    kvAnimationCurve* getAnimationCurve(unsigned long id);
    /// By animated attribute, in the curve list.
    kvAnimationCurve* getAnimationCurve(std::string attribute);
    /// By animated attribute and node, in the curve list: both nodes are compared after
    /// getAnimationNode, so a null `node` finds a curve whose node is gone.
    kvAnimationCurve* getAnimationCurve(std::string attribute, osg::NodePtr node);
    /// The first curve of the curve list that holds a key with the id of `cp`; that key becomes the
    /// curve's current key.
    kvAnimationCurve* getAnimationCurve(kvControlPoint cp);

    /// By id: the scene blocks if `scene`, else the block list; then every clip at any depth.
    kvAnimationBlock* getBlock(unsigned long id, bool scene);
    /// The same by name.
    kvAnimationBlock* getBlock(std::string name, bool scene);
    /// The same by a curve of the block: lists compare the ids of curves, clips the pointers.
    kvAnimationBlock* getBlock(kvAnimationCurve* curve, bool scene);
    /// By id: the scene blocks; with `inClips` then every clip at any depth.
    kvAnimationBlock* getAnimationBlock(unsigned long id, bool inClips);
    /// The same by name.
    kvAnimationBlock* getAnimationBlock(std::string name, bool inClips);
    /// The same by a curve of the block.
    kvAnimationBlock* getAnimationBlock(kvAnimationCurve* curve, bool inClips);

    /// By id: each clip of the list, followed by its direct sub-clips in order of their start.
    kvAnimationClip* getClip(unsigned long id);
    /// The same by name.
    kvAnimationClip* getClip(std::string name);
    /// By id among the sub-clips of `parent` at any depth, depth first; not `parent` itself.
    kvAnimationClip* findSubClip(unsigned long id, kvAnimationClip* parent);
    /// @}

    /// @name Creating
    /// @{

    /// A block for `node` with every curve of the curve list that animates the same node (both
    /// nodes compared after getAnimationNode; curves whose node is gone are left out). It is named
    /// "AnimBlock" and the size of the block list plus one, registered, and typed: 5 and the camera
    /// flag with `cameraBlock`, else 2 for a spot light, 3 a point light, 4 a directional light, 1
    /// anything else. Null when the curve list is empty.
    kvAnimationBlock* createBlock(const osg::NodePtr& node, bool cameraBlock);
    /// The same, named `name` + "_Block_" and the size of the block list plus one.
    kvAnimationBlock* createBlock(const osg::NodePtr& node, std::string name, bool cameraBlock);
    /// A registered block with exactly this name and these curves, nulls left out. It owns the
    /// curves.
    kvAnimationBlock* createBlock(const osg::NodePtr& node, const std::string& name,
                                  const std::vector<kvAnimationCurve*>& curves);
    /// A deep copy, registered in the block list and appended to the scene blocks; null for null.
    kvAnimationBlock* createBlockCopy(kvAnimationBlock* block);
    /// A registered empty clip; an empty name becomes "Clip" and the size of the clip list plus
    /// one.
    kvAnimationClip* newClip(std::string name);
    /// @}

    /// Writes the registry to standard output: curves with keys, blocks and clips with their
    /// content.
    void printInfo();

    /// @name Active clip and change mark
    /// @{
    /// The clip that the host's clip maker shows; null for none. Only stored, never followed.
    static void setActiveClip(kvAnimationClip* clip);
    static kvAnimationClip* getActiveClip(); ///< null at first
    /// A mark for the host that something has changed since it saved; the library never sets it.
    void setDirty(bool dirty);
    bool isDirty() const; ///< true at first
    /// @}

    /// @name Frame evaluation
    /// Values equal to the no-value sentinel (-1e23) are dropped; NaN values are kept. Sub-clips
    /// come before blocks, each in order of start, and the curves of a block in list order; records
    /// for the same attribute are not merged.
    /// @{

    /// The value of a curve at a frame; the sentinel when it has none (null, fewer than two keys,
    /// or a segment without a solution).
    static float computeCurveValue(kvAnimationCurve* curve, float frame);

    /// One record per selected curve.
    std::vector<AnimationMap> computeCurveValues(float frame);
    /// One record per curve of the block, whatever the block's flags and range.
    std::vector<AnimationMap> computeCurveValues(kvAnimationBlock* block, float frame);
    /// The active blocks of the clip and of its sub-clips that are active and in range; no hold
    /// rule, and the activity of `clip` itself is not asked.
    /// `motionBlurOnly` asks only blocks with the motion-blur flag, at every depth.
    std::vector<AnimationMap> computeCurveValues(kvAnimationClip* clip, float frame,
                                                 bool motionBlurOnly);

    /// The bindings of the selected curves with their values at the frame, by the hold rule: within
    /// the range [S, E] of all siblings a curve counts inside its own range; beyond E (before S)
    /// only those that end at E (start at S) still count, and at exactly E or S every one does. A
    /// NaN frame passes nothing.
    std::vector<kvAnimationUtils2::AnimationField> getUpdatedAnimationFields(float frame);
    /// The same for the curves of a block; nothing for an inactive block unless `ignoreActivity`,
    /// and nothing for a block without the motion-blur flag when `motionBlurOnly`.
    std::vector<kvAnimationUtils2::AnimationField>
    getUpdatedAnimationFields(kvAnimationBlock* block, float frame, bool motionBlurOnly,
                              bool ignoreActivity);
    /// The same for a clip: the hold rule selects sub-clips and blocks within the clip's range,
    /// then the curves within each block. Like every request for a clip's range it leaves the items
    /// of all tracks sorted by start.
    std::vector<kvAnimationUtils2::AnimationField> getUpdatedAnimationFields(kvAnimationClip* clip,
                                                                             float frame,
                                                                             bool motionBlurOnly,
                                                                             bool ignoreActivity);

    /// The active sequence items of the clip and its direct sub-clips whose range contains the
    /// frame, dirty or not, in order of start.
    std::vector<kvAnimationSequence2*> computeSequences(kvAnimationClip* clip, float frame);
    /// Fires every dirty item that starts strictly before the frame, active or not, in order of
    /// start, and disarms it, also when no callback is installed: what was passed unheard is not
    /// fired later.
    void checkAndExecSkippedSequences(kvAnimationClip* clip, float frame);
    /// Hands the item's text to the host, then clears its dirty flag; nothing without a callback.
    static void executeSequence(kvAnimationSequence2* seq);

    /// Earliest start and latest end over the key lists; (1e23, -1e23) for an empty vector.
    std::pair<float, float> getStartEndOfCurves(const std::vector<kvAnimationCurve*>& curves);
    /// Cuts to a number of decimal places, toward minus infinity: 1.239 gives 1.23, -1.231 gives
    /// -1.24.
    static float setPrecision(float value, int digits);
    /// @}

    /// @name Nodes
    /// @{

    /// The node whose transform an animation of `node` moves: the parent for a geometry under a
    /// Transform3D, else the node itself; null for null and for a node without a core.
    static osg::NodePtr getAnimationNode(const osg::NodePtr& node);
    /// The node itself when its core is a transform of any kind, else its parent when that one's
    /// is, else null.
    static osg::NodePtr resolveTransformNode(const osg::NodePtr& node);
    /// The light below `root` that the light geometry `node` stands for: the light whose beacon is
    /// the node's grandparent. Null when `node` is no light geometry or has no parent. When the
    /// search fails the light found last is returned, so use the result only for a light that is
    /// there.
    static osg::NodePtr resolveLightNode(const osg::NodePtr& node, osg::NodePtr root);
    /// The step of that search. Inactive nodes are skipped with all below them.
    static osg::Action::ResultE findLight(const osg::NodePtr& node);
    /// The attributes that may be keyed on the node, as constant strings that the caller does not
    /// free: translation and rotation of lights, scale as well for geometries, nothing for other
    /// nodes.
    std::vector<const char*> getKeyableAttributes(const osg::NodePtr& node);

    /// Remembers the last selected node, by id; null forgets it.
    void setActualNode(const osg::NodePtr& node);
    /// The remembered node; null when there is none. A node that is gone gives null and one line on
    /// standard error for every call.
    osg::NodePtr getActualNode();
    /// @}

    /// @name Scene blocks
    /// @{

    /// Appends the blocks stored on `root` and below it to the scene blocks; what was there stays.
    /// Reading consumes the stored form, and with it the references that it held to nodes: `root`
    /// must be referenced by somebody else.
    static void buildAnimationBlockList(const osg::NodePtr& root);
    /// The scene blocks of exactly this node, in list order; null gives those whose node is gone.
    std::vector<kvAnimationBlock*> getNodeBlocks(const osg::NodePtr& node);
    /// Appends to the block list the scene blocks of getAnimationNode(node), duplicates included.
    void collectBlocks(const osg::NodePtr& node);
    /// The same for a camera's beacon; nothing for a camera that is null or has none.
    void collectBlocks(const osg::CameraPtr& camera);
    /// Makes `block` the only active one of the node's scene blocks; a foreign block or null
    /// deactivates them all.
    void setActiveNodeBlock(const osg::NodePtr& node, kvAnimationBlock* block);
    /// @}

    /// @name Curves from the current state
    /// @{

    /// Registers a new curve of that attribute.
    void createAnimation(std::string name);
    /// Keys the curve's own value at the current frame, when that frame lies in its key range (both
    /// ends included) and the curve has a value there.
    void convertCurveValueToCP(kvAnimationCurve* curve);
    /// Does nothing; the arguments stay as they are.
    void convertQuatToEuler(const osg::NodePtr& node, float& x, float& y, float& z);
    /// @}

    /// @name Storing in the scene and reading back
    /// `resolve` looks for the attachment on the transform node (see resolveTransformNode) instead
    /// of the node itself; the forms without it do not resolve. Reading consumes the stored form;
    /// storing replaces stored objects of the same name. Hold a reference to the scene's root
    /// before reading: stored objects hold references to their nodes, and these end with the
    /// reading.
    /// @{
    /// Appends the stored loose curves to the curve list.
    void importCurves(const osg::NodePtr& node, bool resolve);
    /// Appends the stored blocks to the block list; blocks read so do not play globally.
    void importBlocks(const osg::NodePtr& node, bool resolve);
    /// `root` is the camera node, to which curves of camera blocks are re-targeted.
    void importClips(const osg::NodePtr& node, osg::NodePtr root, bool resolve);
    /// Shares what is stored on `from` with `to`, re-targeted; nothing for nulls or the same node.
    void importCameraAnimations(osg::NodePtr from, osg::NodePtr to);
    /// Stores each curve of the curve list on the animation node of its node.
    void exportCurves();
    /// The same for the curves whose animation node is that of `node`.
    void exportCurves(osg::NodePtr node, bool resolve);
    /// Stores each block of the block list on the animation node of its node.
    void exportBlocks();
    /// The same for the blocks whose animation node is that of `node`.
    void exportBlocks(osg::NodePtr node, bool resolve);
    /// Stores each scene block on the animation node of its node.
    void exportAnimationBlocks();
    /// Replaces the clips stored on `root` by the clip list. Old clips are erased from `root`
    /// itself even when `resolve` sends the new ones to its transform node: pass false.
    void exportClips(osg::NodePtr root, bool resolve);
    /// Stores all curves of the curve list, then all blocks of the block list, on `root`.
    void exportAnimations(osg::NodePtr root);
    /// @}

    /// @name Host callbacks
    /// Null uninstalls. Without one the fallback named at the operation below holds.
    /// @{
    static void setSimulationTimeCB(SimulationTimeCB callback);   ///< asked by getSimulationTime
    static void setGetFromAtUpCB(GetFromAtUpCB callback);         ///< asked by getFromAtUp
    static void setFromAtUpCB(SetFromAtUpCB callback);            ///< told by setFromAtUp
    static void setGetFovCB(GetFovCB callback);                   ///< asked by getFOV
    static void setFovCB(SetFovCB callback);                      ///< told by setFOV
    static void setGetZUpCB(GetZUpCB callback);                   ///< asked by getZUp
    static void setZUpCB(SetZUpCB callback);                      ///< told by setZUp
    static void setExecuteSequenceCB(ExecuteSequenceCB callback); ///< told by executeSequence
    static void setUpdateNavigatorCB(UpdateCB callback);          ///< told by updateNavigator
    static void setUpdateRenderCB(UpdateCB callback);             ///< told by updateRender
    /// @}

    /// @name Host services
    /// @{

    /// Seconds on the host's clock; without one, seconds of a monotonic clock since the first call.
    static double getSimulationTime();
    /// The host's field of view; -1 without a callback.
    static float getFOV();
    /// Nothing happens without a callback.
    static void setFOV(float fov);
    /// Whether z is up; false (y is up) without a callback.
    static bool getZUp();
    /// Nothing happens without a callback.
    static void setZUp(bool zUp);
    /// The active camera; all zero without a callback.
    static void getFromAtUp(osg::Pnt3f& from, osg::Pnt3f& at, osg::Vec3f& up);
    /// Places the active camera; nothing happens without a callback.
    static void setFromAtUp(const osg::Pnt3f& from, const osg::Pnt3f& at, const osg::Vec3f& up);
    /// Puts the camera on the horizontal circle around `at` that runs through `from`, at `degree`
    /// degrees from the x axis, as high above `at` as `from` lies above or below it. `up` is not
    /// used: the camera gets the host's up axis.
    static void setObserver(osg::Pnt3f from, osg::Pnt3f at, osg::Vec3f up, float degree);
    /// The degree at which the active camera stands on that circle, 0 to 360; 0 for a camera
    /// exactly above or below its target.
    static float computeObserverDegree();
    /// Asks the host to refresh its navigation; `flag` goes to the callback as it is.
    static void updateNavigator(bool flag);
    /// Asks the host for a new picture; `flag` goes to the callback as it is.
    static void updateRender(bool flag);
    /// @}

    /// @name Settings of the process
    /// What the host keeps here is stored as it is and read by nobody else, but for the frame.
    /// @{
    static float getActualFrame(); ///< the frame evaluated last; 0 at first
    /// Playback sets it with every tick; convertCurveValueToCP keys at it.
    static void setActualFrame(float frame);
    static void setMotionBlurSamples(int samples);    ///< pictures that make one blurred picture
    static int getMotionBlurSamples();                ///< 64 at first
    static void setMotionBlurShutterTime(float time); ///< how long they cover, in the host's unit
    static float getMotionBlurShutterTime();          ///< 1 at first
    static void setActiveAnimationWidget(AnimationWidgetType widget); ///< the editor with the focus
    static AnimationWidgetType getActiveAnimationWidget();            ///< CurveEditor at first
    /// Keeps the camera of the host's viewer; no reference is counted, null for none.
    static void setMGLWCamera(osg::CameraPtr camera);
    static osg::CameraPtr getMGLWCamera(); ///< null at first
    /// @}

    /// @name The curve editor: what is shown and selected
    /// The selection operations are deliberately not symmetrical: selecting works on the keys,
    /// deselecting a curve on its own flag.
    /// @{
    /// What the editor shows from now on, in this order; nothing is owned or checked.
    void setSelectedCurves(const std::vector<kvAnimationCurve*>& curves);
    /// The list itself; valid for the life of the manager.
    std::vector<kvAnimationCurve*>* getSelectedCurves();
    /// The curves of the block become the selected curves.
    void showInEditor(kvAnimationBlock* block);
    /// Sets the flag of the registered curve with the id of `curve`.
    void setCurveVisibility(kvAnimationCurve* curve, bool visible);
    /// Selects all keys of the registered curve with that id; the curve's own flag stays.
    void selectCurve(kvAnimationCurve* curve);
    /// Selects all keys of every curve of the curve list.
    void selectAllCurves();
    /// Clears the flag of the registered curve with that id; its keys stay selected.
    void deselectCurve(kvAnimationCurve* curve);
    /// Clears the flag of every curve of the curve list.
    void deselectAllCurves();
    /// Deselects all keys of the registered curve with that id.
    void deselectCurveCPs(kvAnimationCurve* curve);
    /// Deselects all keys of every selected curve.
    void deselectAllCurvesCPs();
    /// @}

    /// @name The curve editor: operations on all selected curves
    /// In list order.
    /// @{
    /// Recomputes the handles of all keys, by their types.
    void computeTangents();
    /// Gives the selected keys the tangent type and recomputes their handles.
    void computeTangentsOfSelectedCPs(int type);
    /// Stores in each selected key how far it lies from the mouse, in frames and values.
    void computeDistancesToMouseOfAllSelected(double x, double y);
    /// Holds the value between neighbouring selected keys.
    void constantCurveBetweenSelected();
    /// The handle-length mode of each curve; recomputes nothing.
    void setTangentLength(int length);
    /// Moves each selected key to the frame, one after the other. The keys are picked once, by
    /// their place in the list; since each move sorts the keys, a place may name another key by
    /// then.
    void changeFrameOfSelectedCPs(float frame);
    /// Gives each selected key the value.
    void changeValueOfSelectedCPs(float value);
    /// Deletes the selected keys. A curve that is left without keys leaves the selected curves, and
    /// every curve with its id the curve list; the object lives on.
    void deleteSelectedCPs();
    /// @}

    /// @name The curve editor: queries
    /// @{

    /// The first selected curve of which the mouse hits a key or handle; arguments as for
    /// kvControlPointManager::hasHitCPOrTangent.
    kvAnimationCurve* checkForHitWithCurveCP(double x, double y, double dx, double dy);
    /// The range of all keys of the selected curves, widened where it is a point: 30 after and 10
    /// before a single frame, 15 above and 5 below a single value. Without selected curves 30, 15,
    /// -10, -5; when all of them are keyless -9999, -9999, 9999, 9999.
    void getMaxMinValues(double& maxFrame, double& maxValue, double& minFrame, double& minValue);
    /// The neighbours of a frame in the curve's key list; empty for null.
    std::vector<kvControlPoint*> getPrevAndNextCP(double frame, kvAnimationCurve* curve);
    /// A key list that is always empty, for an editor that needs one to show.
    std::vector<kvControlPoint>* getEmptyCPList();
    /// Moves the chosen coordinates to whole numbers, halves away from zero.
    osg::Vec2f snap(osg::Vec2f point, bool snapFrame, bool snapValue);
    /// @}

  private:
    friend struct kvTestAccess<kvAnimationManager2>;

    kvAnimationCurve* findCurve(unsigned long id);
    kvAnimationCurve* findCurve(const std::string& attribute);
    kvAnimationBlock* findBlock(unsigned long id, bool scene);
    kvAnimationBlock* findBlock(const std::string& name, bool scene);
    kvAnimationBlock* findBlock(kvAnimationCurve* curve, bool scene);
    kvAnimationClip* findClip(unsigned long id);
    kvAnimationClip* findClip(const std::string& name);
    kvAnimationCurve* findRegistered(kvAnimationCurve* curve);
    kvAnimationBlock* createBlockOfNode(const osg::NodePtr& node, const std::string& name,
                                        bool cameraBlock);
    static NodeType getNodeType(const osg::NodePtr& node);
    static osg::Action::ResultE getAnimationBlocks(const osg::NodePtr& node);

    static kvAnimationClip* _activeClip;

    static SimulationTimeCB _timeCB;
    static GetFromAtUpCB _gCamFAU;
    static SetFromAtUpCB _sCamFAU;
    static GetFovCB _gFOV;
    static SetFovCB _sFOV;
    static GetZUpCB _gZUp;
    static SetZUpCB _sZUp;
    static ExecuteSequenceCB _seffc;
    static UpdateCB _updateNavigator;
    static UpdateCB _updateRender;

    static float _actualFrame;
    static int _mbSamples;
    static float _mbShutterTime;
    static AnimationWidgetType _activeAnimWidget;
    static osg::CameraPtr _mglwCam;
    static osg::NodePtr _beacon;           // the beacon that the light search looks for
    static osg::NodePtr _appropriateLight; // the light that it found last
    // Their ids: either node may be destroyed while it is kept, and ids are all that is safe to
    // ask.
    static std::uint32_t _beaconId;
    static std::uint32_t _appropriateLightId;

    std::vector<kvAnimationCurve*> _animCurves;
    std::vector<kvAnimationCurve*> _selectedCurves;
    std::vector<kvAnimationBlock*> _blocks;
    std::vector<kvAnimationClip*> _clips;
    std::uint32_t _actualNode = 0;
    std::vector<kvControlPoint> _emptyCPs;
    bool _dirty = true;
};
