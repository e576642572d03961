// What reading takes in memory: never more than 64 MiB and ten times the size of the file, however
// the file lies about what is in it. Nodes are the exception in text: a million of them are a valid
// scene also in the shortest words.
//
// A child process reads, and its memory is what the system says it has grown by. Under the address
// sanitizer that says nothing; there only the outcome counts. OpenSG's own readers have no bound.

#include "opensg/fileContainers.h"
#include "opensg/sceneFileSupport.h"

#include <OpenSG/OSGComponentTransform.h>
#include <OpenSG/OSGGroup.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <zlib.h>

#if defined(__unix__)

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace osg;

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kMeasured = false;
#else
constexpr bool kMeasured = true;
#endif

constexpr std::size_t kMiB = std::size_t(1) << 20;

struct Reading {
    bool scene = false;
    std::size_t memory = 0; ///< bytes
};

std::size_t peakMemory() {
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<std::size_t>(usage.ru_maxrss) * 1024;
}

Reading readElsewhere(const std::string& path) {
    int ends[2] = {};
    Reading reading;
    if (pipe(ends) != 0) return reading;
    const pid_t child = fork();
    if (child == 0) {
        const std::size_t before = peakMemory();
        reading.scene = SceneFileHandler::the().read(path.c_str(), nullptr) != NullFC;
        reading.memory = peakMemory() - before;
        const bool told = write(ends[1], &reading, sizeof reading) == sizeof reading;
        _exit(told ? 0 : 1);
    }
    int status = -1;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0) << "the reader crashed";
    EXPECT_EQ(read(ends[0], &reading, sizeof reading), ssize_t(sizeof reading));
    close(ends[0]);
    close(ends[1]);
    return reading;
}

/// Reads the content and holds the memory against its unpacked size.
void expectWithinLimit(const std::string& content, const char* extension, bool scene,
                       std::size_t unpackedSize = 0) {
    const TemporaryFile file(extension);
    writeContents(file.path(), content);
    const std::size_t size = unpackedSize == 0 ? content.size() : unpackedSize;
    LogLines log;
    const Reading reading = readElsewhere(file.path());
    EXPECT_EQ(reading.scene, scene);
    EXPECT_EQ(log.take().size(), scene ? 0u : 1u);
    if (kMeasured) {
        EXPECT_LE(reading.memory, 64 * kMiB + 10 * size) << size;
    }
    ::testing::Test::RecordProperty("fileKiB", static_cast<int>(size / 1024));
    ::testing::Test::RecordProperty("memoryKiB", static_cast<int>(reading.memory / 1024));
}

std::string repeated(const std::string& text, std::size_t count) {
    std::string all;
    all.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i)
        all += text;
    return all;
}

std::string gzip(const std::string& plain) {
    std::string packed(compressBound(static_cast<uLong>(plain.size())) + 64, '\0');
    z_stream state = {};
    deflateInit2(&state, 9, Z_DEFLATED, 15 + 16, 8, Z_DEFAULT_STRATEGY);
    state.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(plain.data()));
    state.avail_in = static_cast<uInt>(plain.size());
    state.next_out = reinterpret_cast<Bytef*>(&packed[0]);
    state.avail_out = static_cast<uInt>(packed.size());
    EXPECT_EQ(deflate(&state, Z_FINISH), Z_STREAM_END);
    packed.resize(state.total_out);
    deflateEnd(&state);
    return packed;
}

std::string number(std::uint32_t value) {
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes += static_cast<char>(value >> shift & 0xff);
    return bytes;
}

std::string name(const std::string& value) {
    return number(static_cast<std::uint32_t>(value.size() + 1)) + value + '\0';
}

std::string record(const std::string& type, std::uint32_t id, const std::string& fields = "") {
    return name(type) + number(id) + std::string("\x02\0\x64", 3) + fields + name("");
}

/// A binary scene of a node and what is given.
std::string binaryWith(const std::string& records) {
    return name("OpenSG binary V1.0") + name("x") + name("") + std::string(8, '\0') +
           record("Node", 1) + records + name("");
}

std::string field(const std::string& fieldName, const std::string& type, std::uint32_t size,
                  const std::string& payload) {
    return name(fieldName) + name(type) + number(size) + payload;
}

TEST(ReaderMemory, ofSizesAndCountsBeyondTheFile) {
    for (const std::uint32_t lie : {0x00100000u, 0x7fffffffu, 0xfffffff0u, 0xffffffffu}) {
        SCOPED_TRACE(lie);
        expectWithinLimit(
            binaryWith(record("Node", 2, field("children", "MFNodePtr", lie, number(1)))), "osb",
            false);
        for (const char* type : {"MFReal32", "MFVec3f", "MFString"}) {
            const std::string of = type == std::string("MFString")   ? "strings"
                                   : type == std::string("MFReal32") ? "real32s"
                                                                     : "vec3fs";
            expectWithinLimit(
                binaryWith(record("FileValues", 2, field(of, type, 8, number(lie) + number(lie)))),
                "osb", false);
        }
        expectWithinLimit(
            binaryWith(
                record("Node", 2, field("children", "MFNodePtr", 8, number(lie) + number(1)))),
            "osb", false);
        expectWithinLimit(number(lie) + "OpenSG binary V1.0", "osb", false);
    }
}

TEST(ReaderMemory, ofContainersThatAreLargerThanTheirWords) {
    expectWithinLimit("Node { children [ " + repeated("Geometry{}", 600000) + "] }", "osg", false);
    expectWithinLimit("Node { children [ " + repeated("Geometry{}", 20000) + "] }", "osg", true);
    std::string records;
    for (std::uint32_t id = 2; id < 200000; ++id)
        records += record("Geometry", id);
    expectWithinLimit(binaryWith(records), "osb", false);
}

TEST(ReaderMemory, ofNestedContainersThatNobodyKnows) {
    LogLines log; // one for the unknown type, when the scene is read
    const Reading reading = [] {
        const TemporaryFile file("osg");
        writeContents(file.path(),
                      "Node{x[" + repeated("A{x[", 1000000) + repeated("]}", 1000000) + "]}");
        return readElsewhere(file.path());
    }();
    if (kMeasured) {
        EXPECT_LE(reading.memory, 64 * kMiB + 10 * 6 * 1000000);
    }
}

TEST(ReaderMemory, ofListsOfShortValues) {
    const auto scene = [](const char* list, const std::string& value, std::size_t count) {
        return std::string("Node { attachments FileValues { ") + list + " [ " +
               repeated(value, count) + "] } }";
    };
    expectWithinLimit(scene("strings", "a ", 5000000), "osg", false);
    expectWithinLimit(scene("strings", "a ", 200000), "osg", true);
    expectWithinLimit(scene("real32s", "1 ", 5000000), "osg", true);
}

TEST(ReaderMemory, ofPackedDataThatUnpacksToContainers) {
    const std::string text = "Node { children [ " + repeated("Geometry{}", 800000) + "] }";
    const std::string packed = gzip(text);
    ASSERT_LT(packed.size(), text.size() / 100);
    expectWithinLimit(packed, "osg.gz", false, text.size());
    const std::string blanks = "Node { }" + repeated(" ", 16 * kMiB);
    expectWithinLimit(gzip(blanks), "osg.gz", true, blanks.size());
}

TEST(ReaderMemory, ofAnOrdinaryLargeScene) {
    const Scene scene(makeCoredNode<Group>());
    for (int i = 0; i < 20000; ++i) {
        NodePtr child = makeCoredNode<ComponentTransform>();
        setName(child, "joint " + std::to_string(i));
        const FileValuesPtr values = FileValues::create();
        for (int j = 0; j < 20; ++j)
            values->getReal32s().push_back(0.1f * static_cast<float>(i + j));
        child->addAttachment(values);
        scene->addChild(child);
    }
    for (const char* format : {"osg", "osb"})
        expectWithinLimit(writeText(scene.root(), format), format, true);
}

TEST(ReaderMemory, aMillionNodesAreReadWhateverTheirWords) {
    // A million where it does not take long.
#if defined(NDEBUG)
    const std::size_t count = 1000000;
#else
    const std::size_t count = 200000;
#endif
    const TemporaryFile file("osg");
    for (const bool nested : {false, true}) {
        writeContents(file.path(), nested
                                       ? repeated("Node{children[", count) + repeated("]}", count)
                                       : "Node{children[" + repeated("Node{}", count) + "]}");
        const Reading reading = readElsewhere(file.path());
        EXPECT_TRUE(reading.scene);
        if (kMeasured) {
            EXPECT_LE(reading.memory, 64 * kMiB + count * 768);
        }
    }
}

} // namespace

#endif
