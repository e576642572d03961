// Feeds a reader of scene files with bytes that libFuzzer makes up. Whatever they are, a sound
// scene comes of them or one line in the log; a scene can be written and read again; and nothing is
// left behind.
//
// Bytes that begin like gzip data are unpacked, changed and packed again, or else hardly any change
// would get past the checksum.

#include "support/wellFormed.h"

#include <OpenSG/OSGConfig.h>

#include <OpenSG/OSGBaseFunctions.h>
#include <OpenSG/OSGCamera.h>
#include <OpenSG/OSGFieldContainerFactory.h>
#include <OpenSG/OSGLog.h>
#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGSceneFileHandler.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>
#include <zlib.h>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t maxSize, unsigned seed);

using namespace osg;

namespace {

[[noreturn]] void stop(const std::string& fault) {
    std::fprintf(stderr, "FAULT: %s\n", fault.c_str());
    std::abort();
}

/// The log goes to standard output, and that into a file without a name, emptied for each input.
std::FILE* logFile = nullptr;

std::string takeLog() {
    std::string text(static_cast<std::size_t>(ftell(logFile)), '\0');
    std::rewind(logFile);
    const std::size_t size = std::fread(text.data(), 1, text.size(), logFile);
    text.resize(size);
    std::rewind(logFile);
    if (ftruncate(fileno(logFile), 0) != 0) stop("the log cannot be emptied");
    return text;
}

UInt32 nextId() {
    NodePtr node = Node::create();
    const UInt32 id = getContainerId(node);
    addRefCP(node);
    subRefCP(node);
    return id;
}

NodePtr readBytes(const std::string& bytes, const char* format) {
    std::istringstream stream(bytes);
    return SceneFileHandler::the().read(stream, format, nullptr);
}

void requireReadableAgain(const NodePtr& scene, const char* format) {
    std::ostringstream stream;
    if (!SceneFileHandler::the().write(scene, stream, format))
        stop(std::string("a scene that was read cannot be written as ") + format);
    NodePtr again = readBytes(stream.str(), format);
    if (again == NullFC) stop(std::string("what was written as ") + format + " cannot be read");
    addRefCP(again);
    subRefCP(again);
}

/// What cameras point at they do not count, so that it outlives them, with all that hangs on it.
bool hasBeacons(UInt32 from, UInt32 to) {
    for (UInt32 id = from; id < to; ++id) {
        const CameraPtr camera = CameraPtr::dcast(FieldContainerFactory::the()->getContainer(id));
        if (camera != NullFC && camera->getBeacon() != NullFC) return true;
    }
    return false;
}

/// How many pointers of the given containers lead to each of them.
std::map<UInt32, Int32> pointersTo(const std::vector<FieldContainerPtr>& containers) {
    std::map<UInt32, Int32> pointers;
    for (const FieldContainerPtr& container : containers)
        kvtest::forEachPointer(container, [&pointers](const FieldContainerPtr& target) {
            ++pointers[getContainerId(target)];
        });
    return pointers;
}

/// Containers that refer to one another in a circle outlive their scene, as counted references do.
/// Any other that is still there was forgotten by the reader.
void requireNothingLeft(UInt32 from) {
    const UInt32 to = nextId();
    std::vector<FieldContainerPtr> left;
    for (UInt32 id = from; id < to; ++id) {
        const FieldContainerPtr container = FieldContainerFactory::the()->getContainer(id);
        if (container != NullFC) left.push_back(container);
    }
    const std::map<UInt32, Int32> pointers = pointersTo(left);
    for (const FieldContainerPtr& container : left) {
        const auto found = pointers.find(getContainerId(container));
        if (found == pointers.end() || found->second < container.getRefCount())
            stop(std::string("a container is left behind: ") + container->getTypeName());
    }
}

bool isGzip(const std::uint8_t* data, std::size_t size) {
    return size > 18 && data[0] == 0x1f && data[1] == 0x8b;
}

/// What is packed, as far as it goes.
std::vector<std::uint8_t> unpacked(const std::uint8_t* data, std::size_t size, std::size_t most) {
    std::vector<std::uint8_t> result(most);
    z_stream state = {};
    if (inflateInit2(&state, 15 + 16) != Z_OK) return {};
    state.next_in = const_cast<Bytef*>(data);
    state.avail_in = static_cast<uInt>(size);
    state.next_out = result.data();
    state.avail_out = static_cast<uInt>(result.size());
    inflate(&state, Z_FINISH);
    result.resize(state.total_out);
    inflateEnd(&state);
    return result;
}

/// 0 when there is too little room.
std::size_t pack(const std::vector<std::uint8_t>& data, std::uint8_t* room, std::size_t size) {
    z_stream state = {};
    if (deflateInit2(&state, 1, Z_DEFLATED, 15 + 16, 8, Z_DEFAULT_STRATEGY) != Z_OK) return 0;
    state.next_in = const_cast<Bytef*>(data.data());
    state.avail_in = static_cast<uInt>(data.size());
    state.next_out = room;
    state.avail_out = static_cast<uInt>(size);
    const bool whole = deflate(&state, Z_FINISH) == Z_STREAM_END;
    const std::size_t packed = state.total_out;
    deflateEnd(&state);
    return whole ? packed : 0;
}

} // namespace

int LLVMFuzzerInitialize(int*, char***) {
    if (!osgInit(0, nullptr)) stop("the scene graph cannot be initialised");
    logFile = std::tmpfile();
    if (logFile == nullptr) stop("there is no room for a temporary file");
    std::swap(stdout, logFile); // the log writes to whatever is called stdout
    logFile = stdout;
    osgLog().setLogType(LOG_STDOUT);
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const UInt32 before = nextId();
    NodePtr scene = readBytes(std::string(data, data + size), KV_FUZZ_FORMAT);
    const std::string log = takeLog();
    if (scene == NullFC) {
        if (std::count(log.begin(), log.end(), '\n') != 1)
            stop("a file that is refused leaves one line, not these:\n" + log);
    } else {
        addRefCP(scene);
        const std::string fault = kvtest::faultOf(scene);
        if (!fault.empty()) stop(fault);
        scene->updateVolume();
        requireReadableAgain(scene, "osg");
        requireReadableAgain(scene, "osb");
        const bool beacons = hasBeacons(before, nextId());
        subRefCP(scene);
        takeLog();
        if (beacons) return 0;
    }
    requireNothingLeft(before);
    return 0;
}

std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                    unsigned seed) {
    if (!isGzip(data, size) || seed % 8 == 0) return LLVMFuzzerMutate(data, size, maxSize);
    std::vector<std::uint8_t> plain = unpacked(data, size, maxSize);
    const std::size_t plainSize = plain.size();
    plain.resize(maxSize);
    plain.resize(LLVMFuzzerMutate(plain.data(), plainSize, maxSize));
    std::vector<std::uint8_t> packed(maxSize);
    const std::size_t packedSize = pack(plain, packed.data(), packed.size());
    if (packedSize == 0) return LLVMFuzzerMutate(data, size, maxSize);
    std::memcpy(data, packed.data(), packedSize);
    return packedSize;
}
