// The scenes that two programs exchange, each built on its own scene graph:
//
//   kv_exchange_scenes graph                which scene graph this is: embedded or system
//   kv_exchange_scenes write FOLDER         writes every scene as FOLDER/NAME.osg and .osb, and as
//                                           FOLDER/NAME.txt what it holds; prints the names
//   kv_exchange_scenes compare FILE FILE    what the second text lacks of the first, see losses.h
#include "exchange/losses.h"
#include "exchange/scenes.h"

#include <containerDump.h>

#include <OpenSG/OSGBaseFunctions.h>
#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGSceneFileHandler.h>

#include <exception>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace {

std::string contentsOf(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw std::runtime_error(path + ": cannot be read");
    return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

void write(const std::string& folder) {
    const exchange::AllScenes scenes;
    for (const exchange::NamedScene& scene : scenes) {
        const std::string path = folder + '/' + scene.name;
        std::ofstream(path + ".txt", std::ios::binary) << kvanim::containersOf(scene.root);
        for (const char* format : {"osg", "osb"}) {
            std::ofstream file(path + '.' + format, std::ios::binary);
            if (!osg::SceneFileHandler::the().write(scene.root, file, format) || !file.flush())
                throw std::runtime_error(path + ": cannot be written");
        }
        std::cout << scene.name << '\n';
    }
}

int run(const std::string& command, int argc, char** argv) {
    if (command == "graph" && argc == 2) {
        std::cout << KV_EXCHANGE_GRAPH << '\n';
    } else if (command == "write" && argc == 3) {
        write(argv[2]);
    } else if (command == "compare" && argc == 4) {
        std::cout << exchange::lossesBetween(contentsOf(argv[2]), contentsOf(argv[3])) << '\n';
    } else {
        std::cerr << "usage: kv_exchange_scenes graph | write FOLDER | compare FILE FILE\n";
        return 2;
    }
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    try {
        osg::osgInit(0, nullptr);
        return run(argc > 1 ? argv[1] : "", argc, argv);
    } catch (const std::exception& error) {
        std::cerr << "kv_exchange_scenes: " << error.what() << '\n';
        return 1;
    }
}
