#pragma once

#include <kvOpenSGAnimationsApi.h>

class kvMessage;

/// Base class of everything that wants to be told when the animation changes.
///
/// Derive from it and override the notifications that matter. Constructing the object registers it
/// at the end of the process-wide list of listeners, destroying it takes it off. A copy is a
/// different matter: a copy-constructed listener is not registered and never receives anything.
///
/// The static broadcasts call one notification on every listener, first registered first, and
/// return when the last one has. A notification carries nothing: ask the library for what has
/// changed. A listener must not construct or destroy listeners from inside a notification. One
/// thread, that of the user interface.
///
/// The destructor is not virtual: do not delete a listener through a pointer to this class.
class KV_ANIMATIONS_API kvAnimationEvent {
  public:
    /// Registers the object.
    kvAnimationEvent();
    /// Does not register the object.
    kvAnimationEvent(const kvAnimationEvent& other);
    /// Changes nothing: who listens is a matter of identity.
    kvAnimationEvent& operator=(const kvAnimationEvent& other);
    /// Takes the object off the list.
    ~kvAnimationEvent();

    /// @name Notifications; none does anything here
    /// @{
    virtual void listenToPlay();       ///< a block or clip was sent to its start or end
    virtual void listenToTimeLine();   ///< the time line was moved
    virtual void updateCMFrame();      ///< the clip maker shows a new frame
    virtual void updateCEFrame();      ///< the curve editor shows a new frame
    virtual void updateGlobal();       ///< the global time line shows a new frame
    virtual void updateLocal();        ///< the local time line shows a new frame
    virtual void updateBlockSize();    ///< the range of a block changed
    virtual void updateClipSize();     ///< the range of a clip changed
    virtual void refreshClipMaker();   ///< the clip maker must redraw
    virtual void refreshCurveEditor(); ///< the curve editor must redraw
    virtual void refreshAAV();         ///< a view of the host must redraw
    virtual void refreshCAV();         ///< a view of the host must redraw
    virtual void refreshTimeLine();    ///< the time line must redraw
    virtual void renameBlock();        ///< a block has a new name
    virtual void renameClip();         ///< a clip has a new name
    /// @}

    /// @name Broadcasts
    /// @{

    /// Writes the line "calling play listeners" to standard output, then `listenToPlay`.
    static void callAllPlayListeners();
    static void callAllTimeLineListeners(); ///< `listenToTimeLine`
    static void updateClipMakerFrame();     ///< `updateCMFrame`
    static void updateCurveEditorFrame();   ///< `updateCEFrame`
    static void updateGlobalTimeLine();     ///< `updateGlobal`
    static void updateLocalTimeLine();      ///< `updateLocal`
    /// `updateBlockSize`; the message is accepted and not passed on.
    static void callBlockSizeUpdate(kvMessage& message);
    /// `updateClipSize`; the message is accepted and not passed on.
    static void callClipSizeUpdate(kvMessage& message);
    static void callClipMakerRefresh();   ///< `refreshClipMaker`
    static void callCurveEditorRefresh(); ///< `refreshCurveEditor`
    static void callAAVRefresh();         ///< `refreshAAV`
    static void callCAVRefresh();         ///< `refreshCAV`
    static void callTimeLineRefresh();    ///< `refreshTimeLine`
    /// `renameBlock`; the block, which may be null, is not passed on.
    static void callRenameBlock(kvAnimationBlock* block);
    /// `renameClip`; the clip, which may be null, is not passed on.
    static void callRenameClip(kvAnimationClip* clip);
    /// @}

  private:
    friend struct kvTestAccess<kvAnimationEvent>;
};
