#pragma once

// This host's own messages: they hold one value.

#include <boost/any.hpp>

#include <string>

class kvMessage {
  public:
    void set(const std::string& name, const boost::any& value);

    const std::string& name() const { return _name; }
    const boost::any& value() const { return _value; }

    /// How often a message was filled.
    static int filled();

  private:
    std::string _name;
    boost::any _value;
};
