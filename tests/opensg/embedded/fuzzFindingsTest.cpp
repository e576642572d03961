// Files that readers once stumbled over, found by the fuzzers or made by hand in their manner. The
// name of a file says what must come of it: NAME.scene.osg is read, NAME.refused.osb is not.
// OpenSG's own readers crash on some of them and hand out half of others.

#include "opensg/sceneFileSupport.h"
#include "support/wellFormed.h"

#include <OpenSG/OSGAction.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

using namespace osg;

namespace {

namespace fs = std::filesystem;

std::vector<std::string> findings() {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(KV_TEST_DATA "/fuzz"))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

Action::ResultE goOn(NodePtr&) {
    return Action::Continue;
}

class FuzzFinding : public ::testing::TestWithParam<std::string> {};

TEST_P(FuzzFinding, isASoundSceneOrOneLine) {
    const std::string path = KV_TEST_DATA "/fuzz/" + GetParam();
    const bool expected = GetParam().find(".scene.") != std::string::npos;
    ASSERT_NE(expected, GetParam().find(".refused.") != std::string::npos);
    const std::size_t before = countContainers();
    {
        LogLines log;
        const Scene scene(SceneFileHandler::the().read(path.c_str(), nullptr));
        ASSERT_EQ(!scene.isNull(), expected);
        if (scene.isNull()) {
            ASSERT_EQ(log.take().size(), 1u);
            EXPECT_NE(log.take()[0].find(GetParam()), std::string::npos);
        } else {
            EXPECT_EQ(kvtest::faultOf(scene.root()), "");
            traverse(scene.root(), osgTypedFunctionFunctor1CPtrRef<Action::ResultE, NodePtr>(goOn));
            for (const char* format : {"osg", "osb"})
                EXPECT_FALSE(Scene(readText(writeText(scene.root(), format), format)).isNull());
        }
    }
    EXPECT_EQ(countContainers(), before);
}

std::string nameOfTest(const ::testing::TestParamInfo<std::string>& info) {
    std::string name = info.param;
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Data, FuzzFinding, ::testing::ValuesIn(findings()), nameOfTest);

} // namespace
