// The names of attributes that may be animated, and what follows from a name or a value alone.

#include <kvAnimationUtils2.h>

#include <algorithm>
#include <cstdio>
#include <utility>

namespace {

struct SuffixColor {
    const char* lastCharacters;
    float rgb[3];
};

// The letters are the component suffixes of field discovery.
constexpr SuffixColor kSuffixColors[] = {
    {"RX", {229.0F, 76.0F, 76.0F}},
    {"GY", {76.0F, 229.0F, 76.0F}},
    {"BZ", {102.0F, 159.0F, 208.0F}},
    {"AIW", {229.0F, 211.0F, 76.0F}},
};
constexpr float kOtherColor[] = {243.0F, 142.0F, 69.0F};

} // namespace

std::vector<std::string>& kvAnimationUtils2::_attributes() {
    static std::vector<std::string> attributes;
    return attributes;
}

bool kvAnimationUtils2::isAnimationAttribute(const std::string& name) {
    const std::vector<std::string>& attributes = _attributes();
    return std::find(attributes.begin(), attributes.end(), name) != attributes.end();
}

void kvAnimationUtils2::addAnimationAttribute(std::string name) {
    if (!isAnimationAttribute(name)) _attributes().push_back(std::move(name));
}

void kvAnimationUtils2::addAnimationAttributes(std::string list) {
    std::size_t first = 0;
    for (;;) {
        const std::size_t comma = list.find(',', first);
        addAnimationAttribute(list.substr(first, comma - first));
        if (comma == std::string::npos) return;
        first = comma + 1;
    }
}

void kvAnimationUtils2::subAnimationAttribute(const std::string& name) {
    std::vector<std::string>& attributes = _attributes();
    const auto found = std::find(attributes.begin(), attributes.end(), name);
    if (found != attributes.end()) attributes.erase(found);
}

osg::Vec3f kvAnimationUtils2::getCurveColor(std::string name) {
    const float* color = kOtherColor;
    if (!name.empty())
        for (const SuffixColor& row : kSuffixColors)
            if (std::string(row.lastCharacters).find(name.back()) != std::string::npos)
                color = row.rgb;
    return osg::Vec3f(color[0], color[1], color[2]);
}

// Rounding half away from zero and asking for more than 0 is this one comparison, which unlike the
// rounding has an answer for every float.
bool kvAnimationUtils2::floatToBool(float value) {
    return value >= 0.5F;
}

void kvAnimationUtils2::printAnimationFieldInfo(const AnimationField& field) {
    const char* const line = "===========================";
    std::puts("AnimationField INFO");
    std::puts(line);
    std::printf("| fcId:            %i\n", static_cast<int>(field.fcId));
    std::printf("| fieldName:       %s\n", field.fieldName.c_str());
    std::printf("| globalFieldName: %s\n", field.globalFieldName.c_str());
    std::printf("| value:           %f\n", static_cast<double>(field.value));
    std::printf("| valuePosition:   %i\n", static_cast<int>(field.valuePosition));
    std::printf("| dirty:           %i\n", field.dirty ? 1 : 0);
    std::printf("%s\n\n", line);
}
