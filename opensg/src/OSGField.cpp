// What fields and field types do independently of their value type, and the list of field types.
#include <OpenSG/OSGField.h>
#include <OpenSG/OSGFieldFactory.h>
#include <OpenSG/OSGLog.h>

namespace osg {

Field::~Field() = default;

void Field::dump() const {
    std::string text;
    getValueByStr(text);
    SLOG << getType().getName() << " " << text << std::endl;
}

void detail::logNoTextForm(const FieldType& type, bool fromText) {
    SLOG << "Error " << (fromText ? "From" : "To") << " String Conversion not available for "
         << type.getContentType().getName() << std::endl;
}

FieldType::FieldType(const Char8* name, const Char8* parentName, const DataType& contentType,
                     CreateFieldMethod create, Cardinality cardinality)
    : FieldType(name, parentName, contentType, create, cardinality, *this) {}

FieldType::FieldType(const Char8* name, const Char8* parentName, const DataType& contentType,
                     CreateFieldMethod create, Cardinality cardinality, const FieldType& scanAs)
    : DataType(name, parentName), _contentType(&contentType), _create(create),
      _cardinality(cardinality), _scanAs(&scanAs) {
    FieldFactory::the().add(*this);
}

FieldType::~FieldType() {
    FieldFactory::the().remove(*this);
}

// Never destroyed: field types leave it when the program or a library ends, in any order.
FieldFactory& FieldFactory::the() {
    static FieldFactory* const factory = new FieldFactory;
    return *factory;
}

void FieldFactory::add(FieldType& type) {
    _byId.emplace(type.getId(), &type);
    _byName.emplace(type.getCName(), &type);
}

void FieldFactory::remove(FieldType& type) {
    _byId.erase(type.getId());
    const auto found = _byName.find(type.getCName());
    if (found != _byName.end() && found->second == &type) _byName.erase(found);
}

FieldType* FieldFactory::getFieldType(UInt32 typeId) const {
    const auto found = _byId.find(typeId);
    return found == _byId.end() ? nullptr : found->second;
}

FieldType* FieldFactory::getFieldType(const Char8* typeName) const {
    if (typeName == nullptr) return nullptr;
    const auto found = _byName.find(typeName);
    return found == _byName.end() ? nullptr : found->second;
}

const Char8* FieldFactory::getFieldTypeName(UInt32 typeId) const {
    const FieldType* type = getFieldType(typeId);
    return type == nullptr ? nullptr : type->getCName();
}

Field* FieldFactory::createField(UInt32 typeId) const {
    const FieldType* type = getFieldType(typeId);
    return type == nullptr ? nullptr : type->createField();
}

Field* FieldFactory::createField(const Char8* typeName) const {
    const FieldType* type = getFieldType(typeName);
    return type == nullptr ? nullptr : type->createField();
}

} // namespace osg
