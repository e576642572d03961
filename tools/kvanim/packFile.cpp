// Compresses scene files. Not left to the scene graph: compressing streams of an installed OpenSG
// crash or write nothing, depending on what the memory holds.
#include "packFile.h"

#include <zlib.h>

#include <fstream>
#include <memory>
#include <vector>

namespace kvanim {
namespace {

constexpr std::size_t kChunk = 1U << 18;
// The quickest level; scene files shrink to a twentieth all the same.
constexpr char kMode[] = "wb1";

struct CloseUnchecked {
    void operator()(gzFile_s* file) const { gzclose(file); }
};

} // namespace

bool packFile(const std::string& plain, const std::string& packed) {
    std::ifstream in(plain, std::ios::binary);
    std::unique_ptr<gzFile_s, CloseUnchecked> out(gzopen(packed.c_str(), kMode));
    if (!in || !out) return false;
    std::vector<char> chunk(kChunk);
    while (in) {
        in.read(chunk.data(), static_cast<std::streamsize>(chunk.size()));
        const auto length = static_cast<unsigned>(in.gcount());
        if (length > 0 && gzwrite(out.get(), chunk.data(), length) != static_cast<int>(length))
            return false;
    }
    if (!in.eof()) return false;
    return gzclose(out.release()) == Z_OK; // the last bytes are written here
}

} // namespace kvanim
