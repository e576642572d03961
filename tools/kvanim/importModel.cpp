// Any animated model that Assimp reads becomes a scene with blocks of curves.
#include "importModel.h"

#include "errors.h"
#include "importChannels.h"
#include "importMesh.h"

#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationCurve.h>
#include <kvAnimationManager2.h>
#include <kvAnimationUtils2.h>
#include <OSGTransform3D.h>

#include <OpenSG/OSGSimpleAttachments.h>

#include <assimp/Importer.hpp>
#include <assimp/postprocess.h>
#include <assimp/scene.h>

#include <algorithm>
#include <cmath>
#include <unordered_map>
#include <utility>

namespace kvanim {
namespace {

const aiAnimation& chooseAnimation(const aiScene& model, const ImportOptions& options) {
    if (model.mNumAnimations == 0) throw InputError(options.model, "holds no animation");
    if (options.animation.empty()) return *model.mAnimations[0];
    std::string known;
    for (unsigned i = 0; i < model.mNumAnimations; ++i) {
        const std::string name = model.mAnimations[i]->mName.C_Str();
        if (name == options.animation) return *model.mAnimations[i];
        known += (known.empty() ? "" : ", ") + ("\"" + name + "\"");
    }
    throw InputError(options.model,
                     "holds no animation \"" + options.animation + "\", only " + known);
}

osg::NodePtr makeNode(const aiNode& source) {
    aiVector3D scale, translation;
    aiQuaternion rotation;
    source.mTransformation.Decompose(scale, rotation, translation);
    osg::Transform3DPtr core = osg::Transform3D::create();
    osg::beginEditCP(core);
    core->setTranslation(osg::Vec3f(translation.x, translation.y, translation.z));
    osg::Quaternion q;
    q.setValueAsQuat(rotation.x, rotation.y, rotation.z, rotation.w);
    core->setRotation(q);
    core->setScale(osg::Vec3f(scale.x, scale.y, scale.z));
    osg::endEditCP(core);
    osg::NodePtr node = osg::Node::create();
    osg::beginEditCP(node);
    node->setCore(core);
    osg::setName(node, source.mName.C_Str());
    osg::endEditCP(node);
    return node;
}

/// Builds the graph without recursion: models of any depth import.
osg::NodePtr buildGraph(const aiScene& model, ImportReport& report,
                        std::unordered_map<std::string, osg::NodePtr>& byName) {
    const osg::NodePtr root = makeNode(*model.mRootNode);
    std::vector<std::pair<const aiNode*, osg::NodePtr>> open{{model.mRootNode, root}};
    std::size_t unusable = 0;
    while (!open.empty()) {
        const auto [source, node] = open.back();
        open.pop_back();
        ++report.nodes;
        byName.emplace(source->mName.C_Str(), node);
        osg::beginEditCP(node, osg::Node::ChildrenFieldMask);
        for (unsigned i = 0; i < source->mNumMeshes; ++i) {
            const osg::NodePtr mesh = makeMeshNode(model, source->mMeshes[i]);
            if (mesh == osg::NullFC) {
                ++unusable;
                continue;
            }
            node->addChild(mesh);
            ++report.meshes;
            ++report.nodes;
        }
        for (unsigned i = 0; i < source->mNumChildren; ++i) {
            const osg::NodePtr child = makeNode(*source->mChildren[i]);
            node->addChild(child);
            open.emplace_back(source->mChildren[i], child);
        }
        osg::endEditCP(node, osg::Node::ChildrenFieldMask);
    }
    if (unusable > 0) report.dropped.push_back(std::to_string(unusable) + " meshes without faces");
    return root;
}

/// Two keys span the whole animation where nothing changes; otherwise one key a sample.
void reduceConstant(SourceChannel& channel, double first, double last) {
    if (!channel.constant) return;
    const double value = channel.values.front();
    channel.frames = {first, last > first ? last : first + 1.0};
    channel.values = {value, value};
}

/// Handles on the chord at half the segment: the value runs straight from key to key. At exact
/// thirds the frame would run evenly too, but there the closed-form evaluation has no answer.
void fillCurve(kvAnimationCurve& curve, const SourceChannel& channel) {
    const std::size_t last = channel.frames.size() - 1;
    const auto middle = [&](std::size_t i) { // of the segment that starts at key i
        return std::pair<float, float>(
            static_cast<float>(0.5 * (channel.frames[i] + channel.frames[i + 1])),
            static_cast<float>(0.5 * (channel.values[i] + channel.values[i + 1])));
    };
    for (std::size_t i = 0; i <= last; ++i) {
        const float x = static_cast<float>(channel.frames[i]);
        const float y = static_cast<float>(channel.values[i]);
        const auto in = i == 0 ? std::pair<float, float>(x, y) : middle(i - 1);
        const auto out = i == last ? std::pair<float, float>(x, y) : middle(i);
        curve.importControlPoint(x, y, in.first, in.second, out.first, out.second, 6);
    }
}

void measure(const kvAnimationCurve& curve, const SourceChannel& channel, ImportReport& report) {
    double& worst = report.deviation[channel.attribute];
    kvAnimationCurve& readable = const_cast<kvAnimationCurve&>(curve);
    for (std::size_t i = 0; i < channel.frames.size(); ++i) {
        const float frame = static_cast<float>(channel.frames[i]);
        const float value = kvAnimationManager2::computeCurveValue(&readable, frame);
        const double distance = value == -1.0e23F
                                    ? HUGE_VAL
                                    : std::fabs(static_cast<double>(value) - channel.values[i]);
        worst = (std::max)(worst, distance);
    }
}

kvAnimationBlock* makeBlock(const osg::NodePtr& node, std::vector<SourceChannel> channels,
                            const std::pair<double, double>& range, ImportReport& report) {
    kvAnimationBlock* block = new kvAnimationBlock(node, nameOf(node));
    for (SourceChannel& channel : channels) {
        if (channel.frames.empty()) continue;
        const SourceChannel source = channel;
        reduceConstant(channel, range.first, range.second);
        kvAnimationCurve* curve = new kvAnimationCurve(channel.attribute);
        curve->setAppropriateNode(node);
        curve->setIsBlockCurve(true);
        kvAnimationUtils2::createAnimationField(curve);
        fillCurve(*curve, channel);
        block->addCurve(curve);
        measure(*curve, source, report);
        ++report.curves;
        report.keys += channel.frames.size();
    }
    block->updateBlockBounds();
    return block;
}

/// First and last frame of all samples.
std::pair<double, double> rangeOfAll(const std::vector<std::vector<SourceChannel>>& all) {
    double first = HUGE_VAL, last = -HUGE_VAL;
    for (const auto& channels : all) {
        for (const SourceChannel& channel : channels) {
            if (channel.frames.empty()) continue;
            first = (std::min)(first, channel.frames.front());
            last = (std::max)(last, channel.frames.back());
        }
    }
    return first <= last ? std::make_pair(first, last) : std::make_pair(0.0, 0.0);
}

void reportDropped(const aiScene& model, const aiAnimation& animation, ImportReport& report) {
    const auto drop = [&](std::size_t count, const char* what) {
        if (count > 0) report.dropped.push_back(std::to_string(count) + " " + what);
    };
    drop(model.mNumAnimations - 1, "other animations of the model");
    drop(animation.mNumMeshChannels, "mesh animation channels");
    drop(animation.mNumMorphMeshChannels, "morph animation channels");
    drop(model.mNumLights, "lights");
    drop(model.mNumCameras, "cameras");
}

/// Blocks go onto their nodes, or onto the tracks of one clip.
void place(Scene& scene, const std::vector<kvAnimationBlock*>& blocks, const ImportOptions& options,
           ImportReport& report) {
    if (!options.clip) {
        for (kvAnimationBlock* block : blocks)
            scene.addBlock(block);
        return;
    }
    report.clip = report.animation.empty() ? "Clip" : report.animation;
    kvAnimationClip* clip = new kvAnimationClip(report.clip);
    for (kvAnimationBlock* block : blocks)
        clip->addBlock(block);
    scene.addClip(clip);
}

} // namespace

Scene importModel(const ImportOptions& options, ImportReport& report) {
    Assimp::Importer importer;
    const aiScene* model = importer.ReadFile(options.model, aiProcess_Triangulate);
    if (model == nullptr || model->mRootNode == nullptr)
        throw InputError(options.model,
                         std::string("cannot be read: ") + importer.GetErrorString());
    const aiAnimation& animation = chooseAnimation(*model, options);
    const double ticks = animation.mTicksPerSecond > 0.0 ? animation.mTicksPerSecond : 25.0;
    report.animation = animation.mName.C_Str();
    report.framesPerSecond = options.framesPerSecond > 0.0 ? options.framesPerSecond : ticks;
    reportDropped(*model, animation, report);

    std::unordered_map<std::string, osg::NodePtr> byName;
    Scene scene(buildGraph(*model, report, byName), options.model);
    std::vector<std::vector<SourceChannel>> all;
    std::vector<osg::NodePtr> targets;
    std::size_t unordered = 0, homeless = 0;
    for (unsigned i = 0; i < animation.mNumChannels; ++i) {
        const aiNodeAnim& source = *animation.mChannels[i];
        const auto node = byName.find(source.mNodeName.C_Str());
        if (node == byName.end()) {
            ++homeless;
            continue;
        }
        all.push_back(channelsOf(source, report.framesPerSecond / ticks, unordered));
        targets.push_back(node->second);
    }
    if (homeless > 0)
        report.dropped.push_back(std::to_string(homeless) + " animated nodes that the model lacks");
    if (unordered > 0)
        report.dropped.push_back(std::to_string(unordered) + " samples out of order");
    const std::pair<double, double> range = rangeOfAll(all);
    std::vector<kvAnimationBlock*> blocks;
    for (std::size_t i = 0; i < all.size(); ++i)
        blocks.push_back(makeBlock(targets[i], std::move(all[i]), range, report));
    report.animatedNodes = all.size();
    place(scene, blocks, options, report);
    if (report.keys == 0) throw InputError(options.model, "its animation moves no node");
    return scene;
}

} // namespace kvanim
