// Many curves at one frame, several lanes at a time. The values are those of evaluateOne().
//
// What a curve remembers is not asked: it would take longer to come from memory than to compute
// anew, side by side.

/// Segments side by side, each with its curve's place in the batch.
class Lanes {
  public:
    std::size_t count() const { return _count; }
    std::size_t place(std::size_t lane) const { return _places[lane]; }
    FastValue value(std::size_t lane) const { return roundedToFloat(_low[lane], _high[lane]); }

    KV_KERNEL_INLINE void add(std::size_t place, const Segment& s) {
        const double numbers[kRows] = {s.x0, s.x1, s.x2, s.x3, s.y0, s.y1, s.y2, s.y3};
        for (std::size_t row = 0; row < kRows; ++row)
            _rows[row][_count] = numbers[row];
        _places[_count] = place;
        ++_count;
    }

    /// Finds the values of all lanes.
    KV_KERNEL_INLINE void solve(double frame, LastRoots& last) {
        // Those behind the last one in use get its numbers.
        for (std::size_t i = _count; i % KV_KERNEL_LANES != 0; ++i)
            for (auto& row : _rows)
                row[i] = row[_count - 1];
        for (std::size_t i = 0; i < _count; i += KV_KERNEL_LANES) {
            if (!(last.areKnown && areAt(last, i))) findRoots(i, frame, last);
            const BoundedRoot<Number> root = {loaded(last.roots[0]), loaded(last.roots[1])};
            const Between<Number> ends =
                between(boundedValue(at(4, i), at(5, i), at(6, i), at(7, i), root));
            std::memcpy(&_low[i], &ends.low, sizeof ends.low);
            std::memcpy(&_high[i], &ends.high, sizeof ends.high);
        }
    }

  private:
    static constexpr std::size_t kRows = 8; // the frames of a segment, then its values
    static_assert(CurveBatch::kCapacity % KV_KERNEL_LANES == 0, "the last lanes have room");
    static_assert(KV_KERNEL_LANES <= LastRoots::kLanes, "all lanes have room");

    static KV_KERNEL_INLINE Number loaded(const double* lanes) {
        Number number;
        std::memcpy(&number, lanes, sizeof number);
        return number;
    }
    KV_KERNEL_INLINE Number at(std::size_t row, std::size_t lane) const {
        return loaded(&_rows[row][lane]);
    }

    /// Whether these lanes have the very frames, bit for bit.
    KV_KERNEL_INLINE bool areAt(const LastRoots& last, std::size_t lane) const {
        const auto different = [&](std::size_t row) {
            return bitsOf(at(row, lane)) ^ bitsOf(loaded(last.frames[row]));
        };
        return areAllZero(different(0) | different(1) | different(2) | different(3));
    }

    KV_KERNEL_INLINE void findRoots(std::size_t lane, double frame, LastRoots& last) const {
        const BoundedRoot<Number> root = rootAt(lane, frame);
        for (std::size_t row = 0; row < 4; ++row)
            std::memcpy(last.frames[row], &_rows[row][lane], sizeof(Number));
        std::memcpy(last.roots[0], &root.t, sizeof root.t);
        std::memcpy(last.roots[1], &root.error, sizeof root.error);
        last.areKnown = true;
    }

    /// As boundedRoot() for each lane. Neighbouring curves mostly have the same number of roots.
    KV_KERNEL_INLINE BoundedRoot<Number> rootAt(std::size_t lane, double frame) const {
        const Number x0 = at(0, lane);
        const Cubic<Number> cubic =
            cubicWith(coefficients(x0, at(1, lane), at(2, lane), at(3, lane)));
        const Number pCubed = cubic.third * cubic.third * cubic.third;
        const Depressed<Number> d = depressed<Number>(cubic.qStart, (x0 - frame) / cubic.a3, pCubed,
                                                      kCubeError * absolute(pCubed));
        BoundedRoot<Number> root = {x0, Number{} + std::numeric_limits<double>::quiet_NaN()};
        if (isAnyTrue(d.hasOneRoot)) {
            const BoundedRoot<Number> one =
                oneRealRoot<false>(d.q, d.discriminant, d.discriminantError, cubic.shift);
            root.t = d.hasOneRoot ? one.t : root.t;
            root.error = d.hasOneRoot ? one.error : root.error;
        }
        if (isAnyTrue(d.hasThreeRoots)) {
            const BoundedRoot<Number> three = threeRealRoots<Number>(
                d.q, scaleOfRatio<Number>(-pCubed), scaleOfRoots<Number>(cubic.third), cubic.shift,
                kQuickCosines);
            root.t = d.hasThreeRoots ? three.t : root.t;
            root.error = d.hasThreeRoots ? three.error : root.error;
        }
        return root;
    }

    std::size_t _count = 0;
    std::size_t _places[CurveBatch::kCapacity];
    alignas(64) double _rows[kRows][CurveBatch::kCapacity];
    alignas(64) double _low[CurveBatch::kCapacity];
    alignas(64) double _high[CurveBatch::kCapacity];
};

/// See curveBatch.h.
inline void evaluateMany(CurveBatch& batch, float frame, LastRoots& last) {
    Lanes lanes;
    for (std::size_t i = 0; i < batch.count; ++i) {
        CurveBatch::Entry& entry = batch.entries[i];
        Segment read;
        const Segment* segment = entry.known;
        if (segment == nullptr) {
            const std::vector<kvControlPoint>& keys = entry.curve->getCPs();
            if (entry.after == 0 || entry.after >= keys.size()) {
                entry.value = evaluateOne(entry.curve, frame);
                continue;
            }
            KeyListReader::setSegmentEnd(*entry.curve, entry.after);
            read = segmentBetween(keys[entry.after - 1], keys[entry.after]);
            segment = &read;
        }
        if (isHeld(*segment))
            entry.value = static_cast<float>(segment->y0);
        else
            lanes.add(i, *segment);
    }
    lanes.solve(static_cast<double>(frame), last);
    // What is not certain is left to evaluateOne(), which has closer bounds and the literal code.
    for (std::size_t i = 0; i < lanes.count(); ++i) {
        CurveBatch::Entry& entry = batch.entries[lanes.place(i)];
        const FastValue fast = lanes.value(i);
        entry.value = fast.certain ? fast.value : evaluateOne(entry.curve, frame);
    }
}
