#pragma once

// How the library calls this host: by name, with one of the host's own messages.

#include <kvMessage.h>

#include <string>

class kvOpenSGUtils {
  public:
    static void call(const std::string& name, const kvMessage& message, int flags);

    /// The name of the last call and what its message was about.
    static std::string lastCall();
};
