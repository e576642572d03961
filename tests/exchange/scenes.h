#pragma once

#include <OpenSG/OSGConfig.h>
#include <OpenSG/OSGNode.h>

#include <string>
#include <vector>

namespace exchange {

struct NamedScene {
    std::string name;
    osg::NodePtr root;
};

/// Every scene that is exchanged, but for the imported one, which kvanim makes. Holds them.
class AllScenes : public std::vector<NamedScene> {
  public:
    AllScenes();
    ~AllScenes();
    AllScenes(const AllScenes&) = delete;
    AllScenes& operator=(const AllScenes&) = delete;
};

} // namespace exchange
