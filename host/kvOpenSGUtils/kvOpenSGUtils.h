#pragma once

/// @file
/// Messages from the library to its host.

#include "kvOpenSGUtilsApi.h"

#include <kvMessage.h>

#include <deque>
#include <functional>
#include <string>

/// The door through which the library asks its host for something by name, such as
/// "activateCamera".
///
/// Every call is written to a log of the last kLogLength calls, and handed to the handler that the
/// host installed. Main thread only; the handler is called on the caller's thread, before `call`
/// returns, and may itself call or install another handler.
class KV_OPENSG_UTILS_API kvOpenSGUtils {
  public:
    /// What was asked. Scene-graph pointers in the message are not counted: a logged one may name a
    /// node that is gone, so compare it but do not follow it.
    struct Call {
        std::string name;
        kvMessage message;
        int flags;
    };

    typedef std::function<void(const std::string& name, const kvMessage& message, int flags)>
        Handler;

    static constexpr std::size_t kLogLength = 256;

    /// Asks the host. What the flags mean is settled between the caller and the host; the library
    /// passes 0. Without a handler the call is logged only.
    static void call(const std::string& name, const kvMessage& message, int flags);

    /// Installs the host's handler; an empty one uninstalls. Returns the one that was installed
    /// before.
    static Handler setHandler(Handler handler);

    /// @{
    /// The calls since the last clearLog, oldest first; at most kLogLength, the oldest go first.
    static const std::deque<Call>& getLog();
    static void clearLog();
    /// @}
};
