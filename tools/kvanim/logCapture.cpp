// The scene graph's log can go to a file and nowhere else in memory; so it does, for a moment.
#include "logCapture.h"

#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGLog.h>

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

namespace kvanim {

LogCapture::LogCapture() {
    std::error_code error;
    std::filesystem::path folder = std::filesystem::temp_directory_path(error);
    if (error) return;
    std::string name = (folder / "kvanim-log-XXXXXX").string();
    const int descriptor = mkstemp(name.data());
    if (descriptor < 0) return; // the log then goes where it always goes
    close(descriptor);
    _file = name;
    _open = true;
    osg::osgLog().setLogFile(_file.c_str());
    osg::osgLog().setLogType(osg::LOG_FILE);
}

LogCapture::~LogCapture() {
    end();
}

std::string LogCapture::end() {
    if (!_open) return {};
    _open = false;
    osg::osgLog().setLogFile(nullptr);
    osg::osgLog().setLogType(osg::LOG_STDERR);
    std::ifstream in(_file);
    std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    std::remove(_file.c_str());
    const std::string level = "WARNING:  ";
    for (std::size_t at = text.find(level); at != std::string::npos; at = text.find(level))
        text.erase(at, level.size());
    while (!text.empty() && (text.back() == '\n' || text.back() == ' '))
        text.pop_back();
    return text;
}

} // namespace kvanim
