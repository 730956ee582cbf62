#ifndef MORTISE_UCS_CLITRANSLATIONLOADER_H
#define MORTISE_UCS_CLITRANSLATIONLOADER_H

#include "pi/piTypes.h"

namespace mucs
{
class cAbstractLIFileSource;
class cLITrTable;
class cString;

/// Reader of plain translation files: UTF-8, a sequence of entries and comments.
///
///     // what a comment says goes up to the end of its line
///     "Unable to open file \"%file%\"!" = "Die Datei \"%file%\" läßt sich nicht öffnen!";
///
/// In a string a backslash takes the character behind it as it is. Blanks, tabs, line ends and semicolons stand between
/// tokens at will; what is no entry and no comment is passed over. Characters above 127 in a key read "?".
///
/// Errors: a text that breaks off or lacks a quote or an equals sign is a mstd::cTextParseException of the format "tr".
///         Its row is the number of line ends in front of the place, those in strings not counted, whether the file has
///         CR, LF or both at its line ends. What reading the file or decoding UTF-8 raises goes through. Entries in
///         front of the failure stay in the table.
class MORTISE_API cLITranslationLoader
{
public:
  /// Clears the table, then as patchFromFile().
  static void loadFile(cString const& sFile, cLITrTable& tTable);
  static void loadFile(cString const& sFile, cLITrTable& tTable, cAbstractLIFileSource& sSource);
  /// Adds the entries of the file to the table. A key that the table has keeps its translation.
  static void patchFromFile(cString const& sFile, cLITrTable& tTable);
  static void patchFromFile(cString const& sFile, cLITrTable& tTable, cAbstractLIFileSource& sSource);
};
} // namespace mucs

#endif
