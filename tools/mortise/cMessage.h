#ifndef MORTISE_TOOLS_CMESSAGE_H
#define MORTISE_TOOLS_CMESSAGE_H

#include <string>

namespace mstd
{
class cAbstractException;
}

namespace mucs
{
class cString;
}

/// Texts for people.
class cMessage
{
public:
  /// The message of an exception, in one line of UTF-8.
  static std::string of(mstd::cAbstractException const& e);
  /// A text of the library, in the system's encoding.
  static std::string bytes(mucs::cString const& text);
  /// Text of the system, in its encoding, for the library.
  static mucs::cString text(std::string const& bytes);
  /// The text with "?" for every byte that could steer a terminal. Line feeds stay.
  static std::string harmless(std::string text);
  /// The text as whole UTF-8 without control characters: `replacement` stands for each byte that is neither.
  static std::string clean(std::string const& text, char const* replacement = "?");
};

#endif
