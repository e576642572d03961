// The text form of a scene's containers that two programs compare.
#include "containerDump.h"

#include "numbers.h"

#include <OpenSG/OSGAttachment.h>
#include <OpenSG/OSGFieldContainerFields.h>
#include <OpenSG/OSGFieldContainerType.h>
#include <OpenSG/OSGFieldDescription.h>
#include <OpenSG/OSGMFBaseTypes.h>
#include <OpenSG/OSGMFMathTypes.h>
#include <OpenSG/OSGMFSysTypes.h>
#include <OpenSG/OSGMFVecTypes.h>
#include <OpenSG/OSGSFBaseTypes.h>
#include <OpenSG/OSGSFMathTypes.h>
#include <OpenSG/OSGSFSysTypes.h>
#include <OpenSG/OSGSFVecTypes.h>

#include <algorithm>
#include <cstring>
#include <unordered_map>
#include <vector>

namespace kvanim {
namespace {

// --- values, exactly ----------------------------------------------------------------------------

std::string textOf(float value) {
    return shortest(value);
}
std::string textOf(double value) {
    return shortest(value);
}

std::string textOf(const std::string& value) {
    static const char* const kDigits = "0123456789abcdef";
    std::string text = "\"";
    for (const char c : value) {
        const unsigned char byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            text += '\\';
            text += c;
        } else if (byte < 0x20 || byte == 0x7f) {
            text += "\\x";
            text += kDigits[byte >> 4];
            text += kDigits[byte & 15];
        } else {
            text += c;
        }
    }
    return text + '"';
}

template <std::size_t count, class Numbers>
std::string numbersOf(const Numbers& numbers) {
    std::string text;
    for (osg::UInt32 i = 0; i < count; ++i)
        text += (i == 0 ? "" : " ") + shortest(numbers[i]);
    return text;
}

std::string textOf(const osg::Vec2f& value) {
    return numbersOf<2>(value);
}
std::string textOf(const osg::Vec3f& value) {
    return numbersOf<3>(value);
}
std::string textOf(const osg::Vec4f& value) {
    return numbersOf<4>(value);
}
std::string textOf(const osg::Pnt2f& value) {
    return numbersOf<2>(value);
}
std::string textOf(const osg::Pnt3f& value) {
    return numbersOf<3>(value);
}
std::string textOf(const osg::Pnt4f& value) {
    return numbersOf<4>(value);
}
std::string textOf(const osg::Color3f& value) {
    return numbersOf<3>(value);
}
std::string textOf(const osg::Color4f& value) {
    return numbersOf<4>(value);
}
std::string textOf(const osg::Quaternion& value) {
    return numbersOf<4>(value);
}
std::string textOf(const osg::Matrix& value) {
    std::string text;
    for (osg::UInt32 column = 0; column < 4; ++column)
        text += (column == 0 ? "" : " ") + numbersOf<4>(value[column]);
    return text;
}

/// The text of a field when it is one of these two types; false when not.
template <class Single, class Multi>
bool printAs(osg::Field& field, std::string& text) {
    if (const Single* const single = dynamic_cast<const Single*>(&field)) {
        text = textOf(single->getValue());
        return true;
    }
    const Multi* const multi = dynamic_cast<const Multi*>(&field);
    if (multi == nullptr) return false;
    text = "[";
    for (osg::UInt32 i = 0; i < multi->getSize(); ++i)
        text += (i == 0 ? "" : ", ") + textOf((*multi)[i]);
    text += ']';
    return true;
}

std::string valueOf(osg::Field& field) {
    std::string text;
    if (printAs<osg::SFReal32, osg::MFReal32>(field, text) ||
        printAs<osg::SFReal64, osg::MFReal64>(field, text) ||
        printAs<osg::SFString, osg::MFString>(field, text) ||
        printAs<osg::SFVec2f, osg::MFVec2f>(field, text) ||
        printAs<osg::SFVec3f, osg::MFVec3f>(field, text) ||
        printAs<osg::SFVec4f, osg::MFVec4f>(field, text) ||
        printAs<osg::SFPnt2f, osg::MFPnt2f>(field, text) ||
        printAs<osg::SFPnt3f, osg::MFPnt3f>(field, text) ||
        printAs<osg::SFPnt4f, osg::MFPnt4f>(field, text) ||
        printAs<osg::SFColor3f, osg::MFColor3f>(field, text) ||
        printAs<osg::SFColor4f, osg::MFColor4f>(field, text) ||
        printAs<osg::SFQuaternion, osg::MFQuaternion>(field, text) ||
        printAs<osg::SFMatrix, osg::MFMatrix>(field, text))
        return text;
    // Integers and truth values: exact in the field's own text, of which a list appends.
    const bool many = field.getCardinality() == osg::FieldType::MULTI_FIELD;
    field.getValueByStr(text);
    return many ? '[' + text + ']' : text;
}

// --- containers ---------------------------------------------------------------------------------

class Containers {
  public:
    std::string of(const osg::FieldContainerPtr& root) {
        numberOf(root);
        for (std::size_t next = 0; next < _met.size(); ++next) {
            const osg::FieldContainerPtr container = _met[next]; // the list grows meanwhile
            print(container);
        }
        return _text;
    }

  private:
    std::string numberOf(const osg::FieldContainerPtr& container) {
        if (container == osg::NullFC) return "null";
        const auto known =
            _numbers.try_emplace(osg::getContainerId(container), _numbers.size() + 1);
        if (known.second) _met.push_back(container);
        return '#' + std::to_string(known.first->second);
    }

    void print(const osg::FieldContainerPtr& container) {
        const osg::FieldContainerType& type = container->getType();
        _text += numberOf(container) + ' ' + type.getCName() + '\n';
        const bool isNode = osg::NodePtr::dcast(container) != osg::NullFC;
        for (osg::UInt32 i = 1; i <= type.getNumFieldDescs(); ++i) {
            const osg::FieldDescription* const description =
                const_cast<osg::FieldContainerType&>(type).getFieldDescription(i);
            if (description == nullptr || description->isInternal()) continue;
            const std::string name = description->getCName();
            if (isNode && name == "volume") continue;
            osg::Field* const field = container->getField(name.c_str());
            if (field != nullptr) _text += "  " + name + ' ' + print(*field) + '\n';
        }
    }

    std::string print(osg::Field& field) {
        const std::string type = field.getType().getCName();
        if (type == "SFAttachmentMap")
            return print(static_cast<osg::SFAttachmentMap&>(field).getValue());
        // OpenSG itself knows fields of pointers by their names.
        if (type.find("Ptr") == std::string::npos) return valueOf(field);
        if (field.getCardinality() == osg::FieldType::SINGLE_FIELD)
            return numberOf(static_cast<osg::SFFieldContainerPtr&>(field).getValue());
        osg::MFFieldContainerPtr& many = static_cast<osg::MFFieldContainerPtr&>(field);
        std::string text = "[";
        for (osg::UInt32 i = 0; i < many.getSize(); ++i)
            text += (i == 0 ? "" : ", ") + numberOf(many[i]);
        return text + ']';
    }

    /// The map is in the order of groups, which are numbered differently in every program.
    std::string print(const osg::AttachmentMap& attachments) {
        std::vector<osg::AttachmentPtr> sorted;
        for (const auto& [key, attachment] : attachments)
            if (attachment != osg::NullFC && !attachment->getSFInternal()->getValue())
                sorted.push_back(attachment);
        std::stable_sort(sorted.begin(), sorted.end(), [](const auto& a, const auto& b) {
            return std::strcmp(a->getType().getCName(), b->getType().getCName()) < 0;
        });
        std::string text = "[";
        for (std::size_t i = 0; i < sorted.size(); ++i)
            text += (i == 0 ? "" : ", ") + numberOf(sorted[i]);
        return text + ']';
    }

    std::string _text;
    std::unordered_map<osg::UInt32, std::size_t> _numbers;
    std::vector<osg::FieldContainerPtr> _met;
};

} // namespace

std::string containersOf(const osg::NodePtr& root) {
    return Containers().of(root);
}

} // namespace kvanim
