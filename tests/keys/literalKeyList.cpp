// The plain model of a key list.
#include "keys/literalKeyList.h"

#include "keys/handlePlacement.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <utility>

namespace kv::test {

int LiteralKeyList::rounded(double v) {
    const double sum = v >= 0.0 ? v + 0.5 : v - 0.5;
    if (std::isnan(sum) || std::fabs(sum) > 2147483000.0) return INT_MIN;
    return static_cast<int>(std::trunc(sum));
}

LiteralKey* LiteralKeyList::at(int link) {
    if (link < 0 || static_cast<std::size_t>(link) >= keys.size()) return nullptr;
    return &keys[static_cast<std::size_t>(link)];
}

LiteralKey* LiteralKeyList::bySerial(int serial) {
    for (LiteralKey& key : keys)
        if (key.serial == serial) return &key;
    return nullptr;
}

void LiteralKeyList::insert(double x, double y, bool snapX, bool snapY, int id) {
    LiteralKey key;
    key.point = {x, y};
    key.in = key.point;
    key.out = key.point;
    key.id = id;
    if (snapX) key.point.x = rounded(x);
    if (snapY) key.point.y = rounded(y);
    add(key, x);
}

void LiteralKeyList::import(LiteralKey key) {
    key.id = count;
    add(key, key.point.x);
}

void LiteralKeyList::add(LiteralKey key, double replacedFrame) {
    deleteExisting(replacedFrame);
    key.serial = ++_serials;
    keys.push_back(key);
    sort();
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (keys[i].id != key.id) continue;
        current = static_cast<int>(i);
        recomputeExtended(i);
        break;
    }
    ++count;
}

bool LiteralKeyList::deleteExisting(double x) {
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (keys[i].point.x != x) continue;
        keys.erase(keys.begin() + static_cast<std::ptrdiff_t>(i));
        return true;
    }
    return false;
}

void LiteralKeyList::deleteKey(std::size_t place) {
    const LiteralKey key = keys[place];
    const int next = at(key.next) == nullptr ? -1 : at(key.next)->serial;
    const int previous = at(key.previous) == nullptr ? -1 : at(key.previous)->serial;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (keys[i].id != key.id) continue;
        keys.erase(keys.begin() + static_cast<std::ptrdiff_t>(i));
        break;
    }
    sort();
    if (LiteralKey* neighbour = bySerial(next)) recompute(*neighbour);
    if (LiteralKey* neighbour = bySerial(previous)) recompute(*neighbour);
}

void LiteralKeyList::deleteSelected() {
    std::vector<LiteralKey> kept;
    for (const LiteralKey& key : keys)
        if (!key.selected) kept.push_back(key);
    keys = kept;
    sort();
    recomputeAll();
}

void LiteralKeyList::sort() {
    // Numbers first, then what is not a number, each in the order it was in.
    std::vector<LiteralKey> sorted;
    for (const LiteralKey& key : keys) {
        auto place = sorted.end();
        if (!std::isnan(key.point.x))
            while (place != sorted.begin() &&
                   (std::isnan((place - 1)->point.x) || (place - 1)->point.x > key.point.x))
                --place;
        sorted.insert(place, key);
    }
    keys = sorted;
    link();
}

void LiteralKeyList::link() {
    for (std::size_t i = 0; i < keys.size(); ++i) {
        keys[i].previous = static_cast<int>(i) - 1;
        keys[i].next = i + 1 == keys.size() ? -1 : static_cast<int>(i) + 1;
    }
}

bool LiteralKeyList::find(int id) {
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (keys[i].id != id) continue;
        current = static_cast<int>(i);
        return true;
    }
    return false;
}

void LiteralKeyList::recompute(LiteralKey& key) {
    if (keys.size() < 2) return;
    const LiteralKey* previous = at(key.previous);
    const LiteralKey* next = at(key.next);
    detail::KeyRole role = detail::KeyRole::Middle;
    if (key.id == keys.back().id) role = detail::KeyRole::Last;
    if (key.id == keys.front().id) role = detail::KeyRole::First;
    const auto placed =
        detail::placeHandles(key.type, length,
                             {role, key.point, previous == nullptr ? nullptr : &previous->point,
                              next == nullptr ? nullptr : &next->point});
    if (!placed) return;
    key.in = placed->in;
    key.out = placed->out;
}

void LiteralKeyList::recomputeAll() {
    for (LiteralKey& key : keys)
        recompute(key);
}

void LiteralKeyList::recomputeSelected(int type) {
    for (LiteralKey& key : keys) {
        if (!key.selected) continue;
        key.type = type;
        recompute(key);
    }
}

void LiteralKeyList::recomputeExtended(std::size_t place) {
    LiteralKey& key = keys[place];
    if (LiteralKey* previous = at(key.previous)) recompute(*previous);
    recompute(key);
    if (LiteralKey* next = at(key.next)) recompute(*next);
}

void LiteralKeyList::holdSelected() {
    for (LiteralKey& key : keys) {
        LiteralKey* next = at(key.next);
        if (!key.selected || next == nullptr || !next->selected) continue;
        key.out = key.point;
        key.type = 1;
        next->in = next->point;
        next->type = 1;
    }
}

void LiteralKeyList::moveTo(std::size_t place, float x, float y) {
    const LiteralKey before = keys[place];
    keys[place].point = {x, y};
    sort();
    LiteralKey& key = keys[place];
    if (key.type != 6 && key.type != 0) {
        recomputeExtended(place);
        return;
    }
    const auto shifted = [](double to, double from, float by) {
        const float delta = static_cast<float>(to - from);
        const float sum = delta + by;
        return static_cast<double>(sum);
    };
    key.in = {shifted(before.point.x, before.in.x, x), shifted(before.point.y, before.in.y, y)};
    key.out = {shifted(before.out.x, before.point.x, x), shifted(before.out.y, before.point.y, y)};
}

void LiteralKeyList::stretchLeft(float newStart) {
    if (keys.empty()) return;
    const double end = keys.back().point.x;
    const float s = static_cast<float>(keys.front().point.x);
    const float span = static_cast<float>(end - static_cast<double>(s));
    const float newSpan = static_cast<float>(end - static_cast<double>(newStart));
    for (LiteralKey& key : keys)
        for (double* f : {&key.point.x, &key.in.x, &key.out.x}) {
            const float part = (static_cast<float>(*f) - s) / span;
            const float scaled = part * newSpan;
            *f = static_cast<double>(scaled + newStart);
        }
}

void LiteralKeyList::stretchRight(float newEnd) {
    if (keys.empty()) return;
    const double end = keys.back().point.x;
    const float s = static_cast<float>(keys.front().point.x);
    const float span = static_cast<float>(end - static_cast<double>(s));
    const float newSpan = newEnd - s;
    for (LiteralKey& key : keys)
        for (double* f : {&key.point.x, &key.in.x, &key.out.x}) {
            const float part = (static_cast<float>(*f) - s) / span;
            const float scaled = part * newSpan;
            *f = static_cast<double>(scaled + s);
        }
}

void LiteralKeyList::flip() {
    if (keys.size() < 2) return;
    const float range =
        static_cast<float>(keys.back().point.x) - static_cast<float>(keys.front().point.x);
    const float m = static_cast<float>(static_cast<double>(range) * 0.5 + keys.front().point.x);
    const double middle = static_cast<double>(m);
    for (LiteralKey& key : keys) {
        for (double* f : {&key.point.x, &key.in.x, &key.out.x})
            *f = (middle - *f) + middle;
        std::swap(key.in, key.out);
    }
    sort();
}

void LiteralKeyList::loseLinks() {
    for (LiteralKey& key : keys) {
        key.next = -1;
        key.previous = -1;
    }
}

} // namespace kv::test
