// kvanim fields: what of a scene can be animated.
#include "commands.h"
#include "errors.h"
#include "numbers.h"
#include "scene.h"

#include <kvAnimationUtils2.h>

#include <OpenSG/OSGGeometry.h>
#include <OpenSG/OSGMaterial.h>
#include <OpenSG/OSGMaterialGroup.h>
#include <OpenSG/OSGNodeCore.h>

#include <iostream>
#include <memory>
#include <set>

namespace kvanim {
namespace {

using Utils = kvAnimationUtils2;

struct Options {
    std::string file;
    std::string node;
    std::string attributes;
};

struct Part {
    const char* what;
    osg::FieldContainerPtr container;
};

/// The containers of a node whose fields can be bound, without those that it lacks.
std::vector<Part> partsOf(const osg::NodePtr& node) {
    std::vector<Part> parts{{"node", node}};
    const osg::NodeCorePtr core = node->getCore();
    if (core == osg::NullFC) return parts;
    parts.push_back({"core", core});
    const osg::MaterialGroupPtr group = osg::MaterialGroupPtr::dcast(core);
    const osg::MaterialDrawablePtr drawable = osg::MaterialDrawablePtr::dcast(core);
    osg::MaterialPtr material = osg::NullFC;
    if (group != osg::NullFC)
        material = group->getMaterial();
    else if (drawable != osg::NullFC)
        material = drawable->getMaterial();
    if (material != osg::NullFC) parts.push_back({"material", material});
    return parts;
}

std::vector<osg::NodePtr> nodesOf(const Scene& scene, const std::string& name) {
    if (name.empty()) return scene.nodes();
    std::vector<osg::NodePtr> chosen;
    for (const osg::NodePtr& node : scene.nodes())
        if (nameOf(node) == name) chosen.push_back(node);
    if (chosen.empty()) throw InputError(scene.file(), "no node \"" + name + "\"");
    return chosen;
}

/// Without a list of the user's, every field may be animated.
void registerAllFields(const std::vector<osg::NodePtr>& nodes) {
    std::set<const osg::FieldContainerType*> seen;
    for (const osg::NodePtr& node : nodes) {
        for (const Part& part : partsOf(node)) {
            osg::FieldContainerType& type = part.container->getType();
            if (!seen.insert(&type).second) continue;
            for (osg::UInt32 i = 1; i <= type.getNumFieldDescs(); ++i)
                if (const osg::FieldDescription* field = type.getFieldDescription(i))
                    Utils::addAnimationAttribute(field->getCName());
        }
    }
}

void print(const std::vector<Utils::AnimationField>& fields) {
    for (const Utils::AnimationField& field : fields)
        std::cout << "    " << field.fieldName << ' ' << shortest(Utils::getRealFieldValue(field))
                  << " (" << field.globalFieldName << ", number " << field.valuePosition << ")\n";
}

/// One node; answers how many numbers of it can be animated.
std::size_t print(const osg::NodePtr& node) {
    std::size_t count = 0;
    std::cout << nameOf(node) << '\n';
    for (const Part& part : partsOf(node)) {
        const std::vector<Utils::AnimationField> fields =
            Utils::getAnimationFields(node, part.container);
        if (fields.empty()) continue;
        std::cout << "  " << part.what << ' ' << part.container->getType().getCName() << '\n';
        print(fields);
        count += fields.size();
    }
    const std::vector<Utils::AnimationField> special = Utils::getSpecialAnimationFields(node);
    if (!special.empty()) std::cout << "  camera quantities\n";
    print(special);
    return count + special.size();
}

void run(const Options& options) {
    const Scene scene = Scene::read(options.file);
    const std::vector<osg::NodePtr> nodes = nodesOf(scene, options.node);
    if (options.attributes.empty())
        registerAllFields(nodes);
    else
        Utils::addAnimationAttributes(options.attributes);
    std::size_t count = 0;
    for (const osg::NodePtr& node : nodes)
        count += print(node);
    std::cout << options.file << ": " << count << " numbers of " << nodes.size()
              << (nodes.size() == 1 ? " node" : " nodes") << " can be animated\n";
}

} // namespace

void addFields(CLI::App& program) {
    auto options = std::make_shared<Options>();
    CLI::App* command = program.add_subcommand(
        "fields", "List what can be animated on nodes, cores and materials, with current values.");
    command->footer("Example: kvanim fields walk.osg --node Hips --attributes translation,scale");
    command->add_option("scene", options->file, "Scene file")->required();
    command->add_option("--node", options->node, "Only nodes with this name");
    command->add_option("--attributes", options->attributes,
                        "Names of the fields that may be animated, separated by commas (all by "
                        "default); parameters of uber materials need no name");
    command->callback([options] { run(*options); });
}

} // namespace kvanim
