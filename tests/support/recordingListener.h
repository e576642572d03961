#pragma once

#include <kvAnimationEvent.h>

#include <string>
#include <utility>
#include <vector>

namespace kv::test {

using NotificationLog = std::vector<std::string>;

/// Writes down every notification that it gets, as "name.notification", in a log that several
/// listeners may share; without a name the notification alone.
class RecordingListener : public kvAnimationEvent {
  public:
    RecordingListener(std::string name, NotificationLog& log) : _name(std::move(name)), _log(log) {}
    explicit RecordingListener(NotificationLog& log) : _log(log) {}

    void listenToPlay() override { note("listenToPlay"); }
    void listenToTimeLine() override { note("listenToTimeLine"); }
    void updateCMFrame() override { note("updateCMFrame"); }
    void updateCEFrame() override { note("updateCEFrame"); }
    void updateGlobal() override { note("updateGlobal"); }
    void updateLocal() override { note("updateLocal"); }
    void updateBlockSize() override { note("updateBlockSize"); }
    void updateClipSize() override { note("updateClipSize"); }
    void refreshClipMaker() override { note("refreshClipMaker"); }
    void refreshCurveEditor() override { note("refreshCurveEditor"); }
    void refreshAAV() override { note("refreshAAV"); }
    void refreshCAV() override { note("refreshCAV"); }
    void refreshTimeLine() override { note("refreshTimeLine"); }
    void renameBlock() override { note("renameBlock"); }
    void renameClip() override { note("renameClip"); }

  private:
    void note(const char* what) { _log.push_back(_name.empty() ? what : _name + "." + what); }

    std::string _name;
    NotificationLog& _log;
};

} // namespace kv::test
