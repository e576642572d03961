#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

// The identifiers of keys, blocks, sequence items and clips. A unit without dependencies, so that
// the keys, which stand below the manager, can draw from it.
namespace kv::detail {

/// Makes identifiers and remembers every one it has handed out.
///
/// An identifier is the product of two random numbers: r1 in 0..32767 times (r2 mod 100) + 1. A
/// product that was handed out before is handed out again, deliberately; the search for a fresh one
/// still goes on, and what it finds is recorded too. Identifiers are thus unique in most cases
/// only, and nothing may rely on it.
class IdentifierStore {
  public:
    /// @param random a source with the contract of std::rand; its low 15 bits are used
    explicit IdentifierStore(int (*random)());

    /// A new identifier, 0 to 3,276,700. Two random numbers are consumed, and two more for every
    /// collision. Constant time on average, however many were made before.
    std::uint64_t create();

    bool isIssued(std::uint64_t id) const;

    /// Everything handed out or recorded, in the order of recording. A collision is recorded behind
    /// the values that the search for a fresh one found.
    const std::vector<std::uint32_t>& issued() const { return _issued; }

    /// The greatest product.
    static constexpr std::uint32_t kGreatestId = 32767U * 100U;

    /// How many different products there are. Once all have been handed out, a draw records itself
    /// once and the search, which could not end, is left out.
    static constexpr std::size_t kDistinctIds = 1274713;

  private:
    std::uint32_t draw();
    bool mark(std::uint32_t id);

    int (*_random)();
    std::size_t _distinct = 0;
    std::vector<std::uint64_t> _isIssued; // one bit an identifier
    std::vector<std::uint32_t> _issued;
};

/// The store of the process, on std::rand, which the library never seeds. It exists from the first
/// use to the end of the process, so that a host's global objects may make keys at any time.
IdentifierStore& identifierStore();

/// Draws an identifier from the store of the process.
std::uint64_t createUniqueId();

/// Whether the store of the process ever recorded this number; compared in all 64 bits.
bool isIssuedId(std::uint64_t id);

} // namespace kv::detail
