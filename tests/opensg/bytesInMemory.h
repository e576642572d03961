#pragma once

// A stream of bytes in memory.

#include <OpenSG/OSGConfig.h>

#include <OpenSG/OSGBinaryDataHandler.h>

#include <cstring>
#include <utility>
#include <vector>

/// What was put can be read back from the start; reading on behind the end throws.
class BytesInMemory : public osg::BinaryDataHandler {
  public:
    typedef osg::UInt8* Memory;

    BytesInMemory() { forceDirectIO(); }
    explicit BytesInMemory(std::vector<osg::UInt8> bytes) : _bytes(std::move(bytes)) {
        forceDirectIO();
    }

    const std::vector<osg::UInt8>& getBytes() const { return _bytes; }
    std::size_t getRemaining() const { return _bytes.size() - _next; }

  protected:
    void read(Memory destination, osg::UInt32 size) override {
        if (size > getRemaining()) throw ReadError("the bytes are used up");
        std::memcpy(destination, _bytes.data() + _next, size);
        _next += size;
    }
    void write(Memory source, osg::UInt32 size) override {
        _bytes.insert(_bytes.end(), source, source + size);
    }

  private:
    std::vector<osg::UInt8> _bytes;
    std::size_t _next = 0;
};
