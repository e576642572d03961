// The curve editor's operations: mostly one operation of the key list or curve, called on all
// selected curves in list order. What is decided here is which list is walked, and what becomes of
// curves that lose their last key.

#include <OpenSG/OSGConfig.h>

#include <kvAnimationManager2.h>

#include <kvAnimationBlock.h>
#include <kvAnimationCurve.h>

#include <algorithm>
#include <cmath>
#include <unordered_set>

namespace {

template <class Operation>
void forEachCurve(const std::vector<kvAnimationCurve*>& curves, const Operation& operation) {
    for (kvAnimationCurve* curve : curves) {
        if (curve) operation(*curve);
    }
}

bool isKeyless(const kvAnimationCurve& curve) {
    return curve.getCPs().empty();
}

float nearestWhole(float value) {
    const double v = value;
    return static_cast<float>(std::trunc(v >= 0.0 ? v + 0.5 : v - 0.5));
}

} // namespace

// --- what is shown and selected ---------------------------------------------------------------

void kvAnimationManager2::setSelectedCurves(const std::vector<kvAnimationCurve*>& curves) {
    if (&curves != &_selectedCurves) _selectedCurves = curves;
}

std::vector<kvAnimationCurve*>* kvAnimationManager2::getSelectedCurves() {
    return &_selectedCurves;
}

void kvAnimationManager2::showInEditor(kvAnimationBlock* block) {
    if (block) setSelectedCurves(block->getBlockCurves());
}

void kvAnimationManager2::setCurveVisibility(kvAnimationCurve* curve, bool visible) {
    if (kvAnimationCurve* registered = findRegistered(curve)) registered->setVisible(visible);
}

void kvAnimationManager2::selectCurve(kvAnimationCurve* curve) {
    if (kvAnimationCurve* registered = findRegistered(curve)) registered->selectAllCPs();
}

void kvAnimationManager2::selectAllCurves() {
    forEachCurve(_animCurves, [](kvAnimationCurve& curve) { curve.selectAllCPs(); });
}

void kvAnimationManager2::deselectCurve(kvAnimationCurve* curve) {
    if (kvAnimationCurve* registered = findRegistered(curve)) registered->setSelected(false);
}

void kvAnimationManager2::deselectAllCurves() {
    forEachCurve(_animCurves, [](kvAnimationCurve& curve) { curve.setSelected(false); });
}

void kvAnimationManager2::deselectCurveCPs(kvAnimationCurve* curve) {
    if (kvAnimationCurve* registered = findRegistered(curve)) registered->deselectAllCPs();
}

void kvAnimationManager2::deselectAllCurvesCPs() {
    forEachCurve(_selectedCurves, [](kvAnimationCurve& curve) { curve.deselectAllCPs(); });
}

// --- operations on all selected curves --------------------------------------------------------

void kvAnimationManager2::computeTangents() {
    forEachCurve(_selectedCurves, [](kvAnimationCurve& curve) { curve.computeTangents(); });
}

void kvAnimationManager2::computeTangentsOfSelectedCPs(int type) {
    forEachCurve(_selectedCurves, [=](kvAnimationCurve& curve) { curve.computeTangents(type); });
}

void kvAnimationManager2::computeDistancesToMouseOfAllSelected(double x, double y) {
    forEachCurve(_selectedCurves,
                 [=](kvAnimationCurve& curve) { curve.computeDistances2Mouse(x, y); });
}

void kvAnimationManager2::constantCurveBetweenSelected() {
    forEachCurve(_selectedCurves, [](kvAnimationCurve& curve) { curve.constantCurveInterval(); });
}

void kvAnimationManager2::setTangentLength(int length) {
    forEachCurve(_selectedCurves, [=](kvAnimationCurve& curve) { curve.setTangentLength(length); });
}

void kvAnimationManager2::changeFrameOfSelectedCPs(float frame) {
    // By place: every move sorts the keys, so that a place may hold another key when its turn
    // comes.
    forEachCurve(_selectedCurves, [=](kvAnimationCurve& curve) { curve.moveSelectedCPs(frame); });
}

void kvAnimationManager2::changeValueOfSelectedCPs(float value) {
    forEachCurve(_selectedCurves, [=](kvAnimationCurve& curve) {
        for (kvControlPoint* key : curve.getSelectedCPs())
            curve.moveCPTo(key, static_cast<float>(key->getPoint().x), value);
    });
}

void kvAnimationManager2::deleteSelectedCPs() {
    std::unordered_set<std::uint32_t> emptied;
    const auto isEmptied = [&emptied](kvAnimationCurve* curve) {
        if (!curve) return false;
        curve->deleteAllSelectedCPs();
        if (!isKeyless(*curve)) return false;
        emptied.insert(curve->getId());
        return true;
    };
    std::vector<kvAnimationCurve*> remaining;
    remaining.reserve(_selectedCurves.size());
    for (kvAnimationCurve* curve : _selectedCurves) {
        if (!isEmptied(curve)) remaining.push_back(curve);
    }
    _selectedCurves.swap(remaining);
    if (emptied.empty()) return;

    // By id: other curves that carry the same one leave the curve list as well.
    const auto hasEmptiedId = [&emptied](const kvAnimationCurve* curve) {
        return curve && emptied.count(curve->getId()) != 0;
    };
    _animCurves.erase(std::remove_if(_animCurves.begin(), _animCurves.end(), hasEmptiedId),
                      _animCurves.end());
}

// --- queries ----------------------------------------------------------------------------------

kvAnimationCurve* kvAnimationManager2::checkForHitWithCurveCP(double x, double y, double dx,
                                                              double dy) {
    for (kvAnimationCurve* curve : _selectedCurves) {
        if (curve && curve->hasHitCPOrTangent(x, y, dx, dy)) return curve;
    }
    return nullptr;
}

void kvAnimationManager2::getMaxMinValues(double& maxFrame, double& maxValue, double& minFrame,
                                          double& minValue) {
    if (_selectedCurves.empty()) {
        maxFrame = 30.0;
        maxValue = 15.0;
        minFrame = -10.0;
        minValue = -5.0;
        return;
    }
    maxFrame = maxValue = -9999.0;
    minFrame = minValue = 9999.0;
    forEachCurve(_selectedCurves, [&](const kvAnimationCurve& curve) {
        // A keyless list would set all four to 0.
        if (!isKeyless(curve)) curve.getMaxMinValues(maxFrame, maxValue, minFrame, minValue);
    });
    if (minFrame == maxFrame) {
        maxFrame += 30.0;
        minFrame -= 10.0;
    }
    if (minValue == maxValue) {
        maxValue += 15.0;
        minValue -= 5.0;
    }
}

std::vector<kvControlPoint*> kvAnimationManager2::getPrevAndNextCP(double frame,
                                                                   kvAnimationCurve* curve) {
    if (!curve) return {};
    return curve->getPrevAndNextCP(frame);
}

std::vector<kvControlPoint>* kvAnimationManager2::getEmptyCPList() {
    return &_emptyCPs;
}

osg::Vec2f kvAnimationManager2::snap(osg::Vec2f point, bool snapFrame, bool snapValue) {
    if (snapFrame) point[0] = nearestWhole(point[0]);
    if (snapValue) point[1] = nearestWhole(point[1]);
    return point;
}
