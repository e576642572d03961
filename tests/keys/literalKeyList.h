#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include <kvControlPoint.h>

namespace kv::test {

/// A key of the model. Links are places in the list, as addresses are; -1 leads nowhere.
struct LiteralKey {
    kvControlPoint::Point point;
    kvControlPoint::Point in;
    kvControlPoint::Point out;
    int type = 5;
    int id = 0;
    bool selected = false;
    int next = -1;
    int previous = -1;
    int serial = 0; ///< tells keys apart whose ids are equal; survives moving
};

/// A key list done the plain way: linear searches, a full sort and full relinking after every
/// change. It shares with the library only the arithmetic that places one key's handles.
class LiteralKeyList {
  public:
    std::vector<LiteralKey> keys;
    int current = -1; ///< the place of the current key when it was set
    int count = 1;
    int length = 2;

    void insert(double x, double y, bool snapX, bool snapY, int id);
    void import(LiteralKey key);
    bool deleteExisting(double x);
    void deleteKey(std::size_t place);
    void deleteSelected();
    void sort();
    void link();
    bool find(int id);
    void recompute(LiteralKey& key);
    void recomputeAll();
    void recomputeSelected(int type);
    void recomputeExtended(std::size_t place);
    void holdSelected();
    void moveTo(std::size_t place, float x, float y);
    void stretchLeft(float newStart);
    void stretchRight(float newEnd);
    void flip();
    /// Links of a copied list lead into the list it was copied from.
    void loseLinks();

  private:
    void add(LiteralKey key, double replacedFrame);
    LiteralKey* at(int link);
    LiteralKey* bySerial(int serial);
    static int rounded(double v);

    int _serials = 0;
};

} // namespace kv::test
