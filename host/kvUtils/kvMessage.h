#pragma once

/// @file
/// A message with named values.

#include "kvUtilsApi.h"

#include <boost/any.hpp>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

/// Named values of any type, in the order in which their names were first set.
///
/// The values are copies and belong to the message. A scene-graph pointer in a message does not
/// count as a reference.
class KV_UTILS_API kvMessage {
  public:
    typedef std::pair<std::string, boost::any> Entry;

    /// Sets the value of a name. A name that is there already keeps its place and gets the new
    /// value.
    void set(const std::string& name, const boost::any& value);

    /// The value of a name, made (empty, at the end) when there is none: `message["camNode"] =
    /// node`.
    boost::any& operator[](const std::string& name);

    /// The value of a name; an empty one when there is none.
    const boost::any& get(const std::string& name) const;

    /// Copies the value of a name when it is there and exactly of type T; otherwise false, and
    /// `value` is as it was.
    template <class T>
    bool get(const std::string& name, T& value) const {
        const T* const found = boost::any_cast<T>(&get(name));
        if (!found) return false;
        value = *found;
        return true;
    }

    bool has(const std::string& name) const;

    /// Takes a name out; false when it is not there.
    bool remove(const std::string& name);

    void clear() { _entries.clear(); }
    std::size_t size() const { return _entries.size(); }
    bool empty() const { return _entries.empty(); }

    /// All entries in order.
    const std::vector<Entry>& entries() const { return _entries; }

  private:
    /// Messages have a handful of entries, for which a walk is faster than a map.
    std::vector<Entry> _entries;
};
