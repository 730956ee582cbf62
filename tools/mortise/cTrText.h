#ifndef MORTISE_TOOLS_CTRTEXT_H
#define MORTISE_TOOLS_CTRTEXT_H

#include <set>
#include <string>

/// The texts of translation files: keys and translations of messages.
class cTrText
{
public:
  static bool isAscii(std::string const& text);
  static bool isUTF8(std::string const& text);

  /// A text as it stands between the quotes of a file.
  static std::string encode(std::string const& text);
  /// The way back.
  static std::string decode(std::string const& text);

  /// The names of the placeholders, each with its "%" in front, found as a message finds them.
  static std::set<std::string> placeholders(std::string const& text);
  /// The text longer and with accents, still to be read; placeholders as they are.
  static std::string pseudo(std::string const& text);

  /// In quotes, in one line, for people.
  static std::string quoted(std::string const& text);
};

#endif
