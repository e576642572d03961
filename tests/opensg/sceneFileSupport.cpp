// The helpers that the tests of scene files share.

#include "sceneFileSupport.h"

#include <OpenSG/OSGFieldContainerFactory.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

osg::NodePtr Scene::at(std::initializer_list<osg::UInt32> path) const {
    osg::NodePtr node = _root;
    for (const osg::UInt32 child : path) {
        if (node == osg::NullFC || child >= node->getNChildren()) return osg::NullFC;
        node = node->getChild(child);
    }
    return node;
}

LogLines::LogLines() {
    ::testing::internal::CaptureStderr();
}

LogLines::~LogLines() {
    take();
}

const std::vector<std::string>& LogLines::take() {
    if (_taken) return _lines;
    _taken = true;
    std::istringstream stream(::testing::internal::GetCapturedStderr());
    for (std::string line; std::getline(stream, line);)
        _lines.push_back(line);
    return _lines;
}

TemporaryFile::TemporaryFile(const std::string& extension) {
    static int number = 0;
    const std::filesystem::path directory = std::filesystem::temp_directory_path();
    do
        _path = (directory / ("sceneFile" + std::to_string(++number) + "." + extension)).string();
    while (std::filesystem::exists(_path));
}

TemporaryFile::~TemporaryFile() {
    std::error_code ignored;
    std::filesystem::remove_all(_path, ignored);
}

std::string contentsOf(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    std::ostringstream contents;
    contents << stream.rdbuf();
    return contents.str();
}

void writeContents(const std::string& path, const std::string& contents) {
    std::ofstream(path, std::ios::binary) << contents;
}

std::string testData(const std::string& name) {
    return contentsOf(std::string(KV_TEST_DATA) + "/" + name);
}

osg::NodePtr readText(const std::string& text, const char* extension) {
    std::istringstream stream(text);
    return osg::SceneFileHandler::the().read(stream, extension, nullptr);
}

std::string writeText(const osg::NodePtr& root, const char* extension) {
    std::ostringstream stream;
    if (!osg::SceneFileHandler::the().write(root, stream, extension)) return std::string();
    return stream.str();
}

std::size_t countContainers() {
    // Numbers are given in order and never again, so a new one bounds them all.
    osg::NodePtr last = osg::Node::create();
    const osg::UInt32 end = osg::getContainerId(last);
    osg::addRefCP(last);
    osg::subRefCP(last);
    std::size_t count = 0;
    for (osg::UInt32 id = 1; id < end; ++id)
        if (osg::FieldContainerFactory::the()->getContainer(id) != osg::NullFC) ++count;
    return count;
}

std::string nameOf(const osg::AttachmentContainerPtr& container) {
    const osg::Char8* const name = osg::getName(container);
    return name == nullptr ? "(none)" : name;
}
