#pragma once

#include <kvControlPoint.h>

#include <cstddef>

class kvControlPointManager;

namespace kv::detail {

/// Reads stored keys into a list, each with the effect of kvAnimationCurve::importControlPoint, but
/// all of them in one go as long as they ascend and the list was empty: then the keys are linked
/// and their handles placed once, when the import ends, instead of up to three times each. Ids,
/// draws, links, handles and the current key come out the same, because a key's last placement is
/// the only one that counts and depends on nothing but its final neighbours. From the first key on
/// that does not lie behind the one before it, keys are inserted one by one.
///
/// While an import is under way, nothing else may be done with the list.
class KeyImport {
  public:
    /// @param count how many keys are expected; only memory depends on it
    KeyImport(kvControlPointManager& list, std::size_t count);
    ~KeyImport();
    KeyImport(const KeyImport&) = delete;
    KeyImport& operator=(const KeyImport&) = delete;

    void add(kvControlPoint::Point point, kvControlPoint::Point in, kvControlPoint::Point out,
             int tangentType);

  private:
    void finish();

    kvControlPointManager& _list;
    bool _appending; // the list holds nothing but keys of this import, not linked yet
};

} // namespace kv::detail
