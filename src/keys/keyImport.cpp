// Many stored keys into one list.
#include "keys/keyImport.h"

#include <kvControlPointManager.h>

namespace kv::detail {

KeyImport::KeyImport(kvControlPointManager& list, std::size_t count)
    : _list(list), _appending(list.cps.empty()) {
    // The exact number: scenes hold a million keys, and room to grow would be memory for nothing.
    if (_appending) list.cps.reserve(count);
}

KeyImport::~KeyImport() {
    finish();
}

void KeyImport::add(kvControlPoint::Point point, kvControlPoint::Point in,
                    kvControlPoint::Point out, int tangentType) {
    // A key made by default draws an id, as every import does; it keeps the list's counter instead.
    const auto fill = [&](kvControlPoint& key) {
        key.point = point;
        key.inTangent = in;
        key.outTangent = out;
        key.tangentType = tangentType;
        key.id = _list.cpCount;
    };
    // A NaN is not behind anything, and nothing is behind a NaN.
    if (_appending && !_list.cps.empty() && !(_list.cps.back().point.x < point.x)) finish();
    if (_appending) {
        fill(_list.cps.emplace_back());
        _list.countInsertion();
        return;
    }
    kvControlPoint key;
    fill(key);
    _list.insertKey(point.x, key);
}

void KeyImport::finish() {
    if (!_appending) return;
    _appending = false;
    if (_list.cps.empty()) return;
    _list.noteSorted();
    _list.linkAll();
    _list.order.linked = true;
    _list.currentCP = &_list.cps.back();
    _list.computeTangents();
}

} // namespace kv::detail
