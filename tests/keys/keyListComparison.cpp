// The random edits, as the curve makes them and as the plain model does.
#include "keys/keyListComparison.h"

#include <cstdlib>
#include <vector>

namespace kv::test {

// An identifier by the literal rule, on the model's own record of those issued.
int Comparison::drawId() {
    const int r1 = std::rand() & 0x7FFF;
    const int r2 = std::rand() & 0x7FFF;
    const std::uint64_t id = static_cast<std::uint64_t>(r1 * (r2 % 100 + 1));
    if (_ids.count(id) == 1) drawId();
    _ids.insert(id);
    return static_cast<int>(id);
}

void Comparison::editCurve(std::uint32_t edit) {
    OpenCurve& curve = *_curve;
    std::vector<kvControlPoint>& keys = State::keys(curve);
    switch (edit % 32) {
    case 0:
    case 1:
    case 2:
    case 3:
    case 4:
    case 5: {
        const double x = frame();
        const double y = value();
        const bool snapX = coin();
        curve.insertCP(x, y, snapX, coin());
        break;
    }
    case 6:
        curve.insertCP(curve.getEndFrame() + 0.5, value());
        break;
    case 7:
    case 8: {
        const float x = single(frame());
        const float y = single(value());
        const float inX = single(value());
        curve.importControlPoint(x, y, inX, 2.0F, 3.0F, 4.0F, static_cast<int>(_random() % 8));
        break;
    }
    case 9: {
        const double x = frame();
        kvControlPoint cp(x, 1.5, static_cast<int>(_random() % 8));
        curve.addControlPoint(cp);
        EXPECT_EQ(cp.getId(), State::count(curve) - 1);
        break;
    }
    case 10:
        curve.deleteExistingKey(frame());
        break;
    case 11:
    case 12:
        if (!keys.empty()) curve.deleteCP(&keys[place()]);
        break;
    case 13:
        curve.deleteAllSelectedCPs();
        break;
    case 14:
        if (!keys.empty()) keys[place()].setPoint({frame(), 3.0});
        break;
    case 15:
        if (!keys.empty()) keys[place()].setId(static_cast<int>(_random() % 40));
        break;
    default:
        editCurveShape(edit);
    }
}

void Comparison::editModel(std::uint32_t edit) {
    _currentDangles = false;
    switch (edit % 32) {
    case 0:
    case 1:
    case 2:
    case 3:
    case 4:
    case 5: {
        _edit = "insertCP";
        const double x = frame();
        const double y = value();
        const bool snapX = coin();
        const bool snapY = coin();
        _model.insert(x, y, snapX, snapY, drawId());
        break;
    }
    case 6: {
        _edit = "insertCP at the end";
        const double end = _model.keys.empty() ? -99999.0 : _model.keys.back().point.x;
        _model.insert(end + 0.5, value(), false, false, drawId());
        break;
    }
    case 7:
    case 8: {
        _edit = "importControlPoint";
        LiteralKey key;
        key.point.x = static_cast<double>(single(frame()));
        key.point.y = static_cast<double>(single(value()));
        key.in = {static_cast<double>(single(value())), 2.0};
        key.out = {3.0, 4.0};
        key.type = static_cast<int>(_random() % 8);
        drawId(); // the default key's own
        _model.import(key);
        break;
    }
    case 9: {
        _edit = "addControlPoint";
        LiteralKey key;
        key.point = {frame(), 1.5};
        key.in = key.point;
        key.out = key.point;
        key.type = static_cast<int>(_random() % 8);
        drawId();
        _model.import(key);
        break;
    }
    case 10:
        _edit = "deleteExistingKey";
        _model.deleteExisting(frame());
        _currentDangles = true;
        break;
    case 11:
    case 12:
        _edit = "deleteCP";
        if (!_model.keys.empty()) _model.deleteKey(place());
        _currentDangles = true;
        break;
    case 13:
        _edit = "deleteAllSelectedCPs";
        _model.deleteSelected();
        _currentDangles = true;
        break;
    case 14:
        _edit = "setPoint";
        if (!_model.keys.empty()) {
            LiteralKey& key = _model.keys[place()];
            key.point = {frame(), 3.0};
        }
        break;
    case 15:
        _edit = "setId";
        if (!_model.keys.empty()) {
            LiteralKey& key = _model.keys[place()];
            key.id = static_cast<int>(_random() % 40);
        }
        break;
    default:
        editModelShape(edit);
    }
}

void Comparison::editCurveShape(std::uint32_t edit) {
    OpenCurve& curve = *_curve;
    std::vector<kvControlPoint>& keys = State::keys(curve);
    switch (edit % 32) {
    case 16:
    case 17:
    case 18:
        for (int i = 0; i < 2 && !keys.empty(); ++i) {
            kvControlPoint& cp = keys[place()];
            cp.setSelected(!cp.isSelected());
        }
        break;
    case 19:
        curve.computeTangents(static_cast<int>(_random() % 8));
        break;
    case 20:
        curve.computeTangents();
        break;
    case 21:
        curve.constantCurveInterval();
        break;
    case 22:
        curve.setTangentLength(static_cast<int>(_random() % 5));
        break;
    case 23:
    case 24:
    case 25:
        if (!keys.empty()) {
            kvControlPoint& cp = keys[place()];
            const float x = single(frame());
            curve.moveCPTo(&cp, x, single(value()));
        }
        break;
    case 26:
        curve.sortCPs();
        break;
    case 27:
        curve.computeLinkedList();
        break;
    case 28:
        curve.findCP(static_cast<int>(_random() % 40));
        break;
    case 29:
        if (coin())
            curve.stretchLeft(single(frame()));
        else
            curve.stretchRight(single(frame()));
        break;
    case 30:
        curve.flip();
        break;
    default:
        _curve = std::make_unique<OpenCurve>(curve);
    }
}

void Comparison::editModelShape(std::uint32_t edit) {
    switch (edit % 32) {
    case 16:
    case 17:
    case 18:
        _edit = "setSelected";
        for (int i = 0; i < 2 && !_model.keys.empty(); ++i) {
            LiteralKey& key = _model.keys[place()];
            key.selected = !key.selected;
        }
        break;
    case 19:
        _edit = "computeTangents(type)";
        _model.recomputeSelected(static_cast<int>(_random() % 8));
        break;
    case 20:
        _edit = "computeTangents";
        _model.recomputeAll();
        break;
    case 21:
        _edit = "constantCurveInterval";
        _model.holdSelected();
        break;
    case 22:
        _edit = "setTangentLength";
        _model.length = static_cast<int>(_random() % 5);
        break;
    case 23:
    case 24:
    case 25:
        _edit = "moveCPTo";
        if (!_model.keys.empty()) {
            const std::size_t at = place();
            const float x = single(frame());
            _model.moveTo(at, x, single(value()));
        }
        break;
    case 26:
        _edit = "sortCPs";
        _model.sort();
        break;
    case 27:
        _edit = "computeLinkedList";
        _model.link();
        break;
    case 28:
        _edit = "findCP";
        _model.find(static_cast<int>(_random() % 40));
        break;
    case 29:
        _edit = "stretch";
        if (coin())
            _model.stretchLeft(single(frame()));
        else
            _model.stretchRight(single(frame()));
        break;
    case 30:
        _edit = "flip";
        _model.flip();
        break;
    default:
        _edit = "copy";
        _model.loseLinks();
        _model.current = -1;
    }
}

} // namespace kv::test
