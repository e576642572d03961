#pragma once

// What the tests of saving share.

#include "opensg/sceneFileSupport.h"

#include <filesystem>
#include <string>

namespace sceneSaving {

inline bool save(const osg::NodePtr& root, const std::string& path, bool compress = false) {
    return osg::SceneFileHandler::the().write(root, path.c_str(), compress);
}

/// A directory that is removed with all that is in it.
class Directory {
  public:
    Directory() : _place("directory") { std::filesystem::create_directory(_place.path()); }
    std::string operator/(const std::string& name) const { return _place.path() + "/" + name; }
    std::size_t size() const {
        std::size_t count = 0;
        for ([[maybe_unused]] const auto& entry :
             std::filesystem::directory_iterator(_place.path()))
            ++count;
        return count;
    }

  private:
    TemporaryFile _place;
};

} // namespace sceneSaving
