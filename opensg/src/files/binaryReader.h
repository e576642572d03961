#pragma once

// OpenSG's binary format, read.

#include "files/byteCursor.h"
#include "files/readLog.h"
#include "files/sceneBuilder.h"

#include <OpenSG/OSGNode.h>

#include <string>
#include <string_view>
#include <vector>

namespace osg::files {

/// Reads one scene: first all containers with their values, then, when nothing can fail any more,
/// the pointers between them.
class BinaryReader {
  public:
    /// The bytes must stay alive while they are read.
    BinaryReader(const char* begin, const char* end, ReadLog& log);

    /// The first container of the file; null after a message when the file is malformed or that is
    /// no node.
    NodePtr read();

  private:
    /// A container of the file. Its pointers are those from `firstLink` to the next record's.
    struct Record {
        UInt32 id;
        std::size_t firstLink;
        const TypeInfo* type; ///< null when it is unknown
        FieldContainerPtr container;
        std::size_t number;
    };

    /// A pointer field as it stands in the file.
    struct Link {
        const FieldInfo* info;
        ByteCursor bytes;
    };

    /// The place of a node in the tree.
    struct TreePlace {
        std::size_t parent; ///< the number of a record, kNowhere for none
        std::size_t depth;
        bool added;
    };
    static constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

    bool fail(const std::string& reason);
    bool readHeader();
    bool readRecords();
    bool readRecord(std::string_view typeName);
    bool readBody(Record& record);
    bool readField(Record& record, std::string_view name, std::size_t& likely);
    bool readValue(Record& record, const FieldInfo& info, std::string_view typeName,
                   ByteCursor& bytes);
    bool isReadableAs(const Field& field, std::string_view typeName, std::size_t size) const;
    static std::string nameOf(const Record& record, const FieldInfo& info);
    bool checkLink(const FieldInfo& info, std::string_view typeName, ByteCursor bytes);
    bool takeMemory(std::size_t bytes);

    bool indexRecords();
    bool sortRecords();
    bool failTwice(UInt32 id);
    bool placeNodes();
    bool findDepths();
    void linkAll();
    void linkRecord(std::size_t index);
    void linkChildren(std::size_t index);
    void linkAttachments(const AttachmentContainerPtr& carrier, ByteCursor bytes);
    void linkPointers(const Record& record, const Link& link);
    void count(const Record& record, const FieldInfo& info, const FieldContainerPtr& target);
    void release(const Record& record, const FieldInfo& info, FieldContainerPtr target);
    void finishAll();
    const Record* findRecord(UInt32 id) const;
    void warnOfMisfit(const FieldContainerPtr& target, const FieldInfo& info);
    template <class Visit>
    void forEachChild(std::size_t index, const Visit& visit) const;
    std::size_t endOfLinks(std::size_t index) const;

    ByteCursor _bytes;
    const char* _begin;
    ReadLog& _log;
    ContainerTypes _types;
    SceneBuilder _builder;
    std::vector<Record> _records;
    std::vector<Link> _links;
    /// The places of the records: one more than each, 0 for none, at the containers' numbers in the
    /// file from `_firstId` on; or in the order of those numbers when they are far apart.
    std::vector<UInt32> _byId;
    UInt32 _firstId = 0;
    bool _dense = false;
    std::vector<TreePlace> _places;
};

} // namespace osg::files
