// The register of all type names. It is reached through a function and never destroyed, because
// types are objects with static storage that come and go in any order.
#include <OpenSG/OSGTypeBase.h>

#include <OpenSG/OSGLog.h>

#include <string>
#include <unordered_map>

namespace osg {

namespace {

struct TypeNames {
    std::unordered_map<std::string, TypeBase*> taken;
    UInt32 lastId = 0;
};

TypeNames& typeNames() {
    static TypeNames* const names = new TypeNames;
    return *names;
}

} // namespace

TypeBase::TypeBase(const Char8* name, const Char8* parentName)
    : _id(++typeNames().lastId), _name(name), _parentName(parentName) {
    if (!typeNames().taken.emplace(_name.str(), this).second)
        SWARNING << "a type called " << _name << " exists already" << std::endl;
}

TypeBase::~TypeBase() {
    auto& taken = typeNames().taken;
    const auto found = taken.find(_name.str());
    if (found != taken.end() && found->second == this) taken.erase(found);
}

} // namespace osg
