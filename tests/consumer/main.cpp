// The smallest program of a user: a curve with two keys, evaluated between them; and a scene file
// in which stored animation comes back, although this program names none of the types that store
// it.
#include <OpenSG/OSGConfig.h>

#include <OpenSG/OSGBaseFunctions.h>
#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGSceneFileHandler.h>

#include <kvAnimationCurve.h>
#include <kvAnimationManager2.h>

#include <cstdio>
#include <sstream>
#include <string>

namespace {

bool curveHasItsValue() {
    kvAnimationCurve curve("translateX");
    curve.insertCP(0.0, 0.0);
    curve.insertCP(25.0, 10.0);
    const float value = kvAnimationManager2::computeCurveValue(&curve, 12.5f);
    std::printf("translateX at frame 12.5: %g\n", static_cast<double>(value));
    return value == 6.875F;
}

std::string written(const osg::NodePtr& scene, const char* format) {
    std::ostringstream stream;
    return osg::SceneFileHandler::the().write(scene, stream, format) ? stream.str() : std::string();
}

osg::NodePtr read(const std::string& content, const char* format) {
    std::istringstream stream(content);
    return osg::SceneFileHandler::the().read(stream, format, NULL);
}

bool holdsAllTypes(const std::string& content) {
    bool all = true;
    for (const char* type : {"AnimationAttachment", "AnimationClip", "AnimationTrack",
                             "AnimationBlock", "AnimationCurve", "AnimationControlPoint"}) {
        if (content.find(type) != std::string::npos) continue;
        std::printf("%s did not come back\n", type);
        all = false;
    }
    return all;
}

bool storedAnimationComesBack() {
    osg::NodePtr scene =
        read("#OSG V1.0 \n"
             "Node {\n core Group {\n }\n attachments [\n  AnimationAttachment {\n"
             "   curves [\n    AnimationCurve {\n     controlPoints [\n"
             "      AnimationControlPoint {\n       ControlPoint 1 2\n      }\n"
             "     ]\n    }\n   ]\n   blocks [\n    AnimationBlock {\n    }\n   ]\n"
             "   clips [\n    AnimationClip {\n     tracks [\n"
             "      AnimationTrack {\n      }\n     ]\n    }\n   ]\n"
             "  }\n ]\n}\n",
             "osg");
    if (scene == osg::NullFC) return false;
    osg::addRefCP(scene);
    const std::string binary = written(scene, "osb");
    bool all = holdsAllTypes(written(scene, "osg")) && holdsAllTypes(binary);
    osg::subRefCP(scene);

    osg::NodePtr again = read(binary, "osb");
    if (again == osg::NullFC) return false;
    osg::addRefCP(again);
    all = holdsAllTypes(written(again, "osg")) && all;
    osg::subRefCP(again);
    return all;
}

} // namespace

int main(int argc, char** argv) {
    if (!osg::osgInit(argc, argv)) return 2;
    const bool curve = curveHasItsValue();
    const bool scene = storedAnimationComesBack();
    return curve && scene ? 0 : 1;
}
