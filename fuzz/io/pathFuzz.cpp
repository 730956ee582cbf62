#include "io/cFileInfo.h"
#include "io/cPath.h"
#include "io/pathFixup.h"
#include "std/tConstArrayRef.h"
#include "std/tTokenizer.h"
#include "ucs/cString.h"

#include <cstdint>
#include <cstdlib>

namespace
{

typedef mucs::cString cString;

void check(bool holds)
{
  if (!holds)
  {
    std::abort();
  }
}

bool isSeparator(unsigned int c)
{
  return c == '/' || c == '\\';
}

bool endsIn(cString const& text, unsigned int c)
{
  return !text.empty() && text[text.length() - 1] == c;
}

/// The normal form token by token, as plainly as it can be told.
cString plainFixup(cString const& path, bool& isEscaped)
{
  typedef mstd::tTokenizer<mstd::tConstArrayRef<unsigned int>, cString> tScanner;
  mstd::tTokenizerContext<cString> context;
  context.addKey("../", 2);
  context.addKey("./", 3);
  context.addKey("/", 4);
  mstd::tConstArrayRef<unsigned int> const view(path);
  tScanner scanner(view, &context);
  bool const isRelative = mio::isRelative(path);
  bool isFirst = true;
  cString result;
  cString token;
  unsigned int id = 0;
  isEscaped = false;
  while (scanner.getNextToken(token, id))
  {
    if (id == 2)
    {
      unsigned int parent = result.length() < 2 ? 0 : result.length() - 1;
      while (parent != 0 && !isSeparator(result[parent - 1]))
      {
        --parent;
      }
      if (parent != 0)
      {
        cString last(result);
        last.erase(0, parent);
        if (isEscaped && last == "../")
        {
          result += token;
        }
        else
        {
          result.truncate(parent);
        }
        continue;
      }
      if (!isRelative)
      {
        break;
      }
      if (result == "./")
      {
        result = token;
        continue;
      }
      if (!result.empty() && result != "../")
      {
        result.setSize(0);
        continue;
      }
      isEscaped = true;
    }
    if (id == 3 && !isFirst)
    {
      continue;
    }
    isFirst = false;
    if (id == 4 && endsIn(result, '/'))
    {
      continue;
    }
    result += token;
  }
  return result.empty() ? cString("./") : result;
}

} // namespace

// Byte 0: where the bytes are divided into two paths, and how wide the characters are. Normal forms must be those of
// the plain walk; the other operations must keep their promises.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
  if (size == 0)
  {
    return 0;
  }
  cString texts[2];
  unsigned int const divided = data[0] & 0x7f;
  for (std::size_t i = 1; i < size; ++i)
  {
    // Bytes above 127 stand for characters that agree with a key in some of their bits.
    unsigned int const code = (data[0] & 0x80) != 0 && data[i] > 127 ? (data[i] & 0x7fu) * 0x1000100u : data[i];
    texts[i > divided ? 1 : 0].append(code);
  }
  cString const& text = texts[0];
  cString const& other = texts[1];

  bool isEscaped = false;
  bool isEscapedPlainly = false;
  cString fixed(text);
  mio::fixupPath(fixed, isEscaped, nullptr);
  check(fixed == plainFixup(text, isEscapedPlainly) && isEscaped == isEscapedPlainly);
  mio::tPathHash table;
  cString stored(text);
  mio::fixupPath(stored, isEscaped, &table);
  check(stored == fixed && table.has(text) != nullptr && *table.has(text) == fixed);

  mio::cPath const raw(text, false);
  mio::cPath normal(text, true);
  check(endsIn(raw.unixEquivalent(), '/'));
  cString const expected(plainFixup(raw.unixEquivalent(), isEscapedPlainly));
  check(normal.unixEquivalent() == expected);
  check(normal.driveLetter() == (isEscapedPlainly ? 0 : raw.driveLetter()));
  mio::cPath again(raw);
  again.fixup(&table);
  check(again.unixEquivalent() == expected && again.driveLetter() == normal.driveLetter());

  mio::cPath const base(other, false);
  mio::cPath moved(raw);
  moved.cd(other);
  check(!mio::isRelative(other) || endsIn(moved.unixEquivalent(), '/') || endsIn(moved.unixEquivalent(), '\\'));
  moved.makeAbsolute(base);
  mio::cPath way(raw);
  way.makeRelative(base);
  check(endsIn(way.unixEquivalent(), '/') && way.driveLetter() == raw.driveLetter());
  cString const file(mio::cPath("/a/b").relativeTo(text));
  check(mio::isRelative(text) || file == text);
  check(raw == raw && (base == raw) == (raw == base));
  for (unsigned int i = 0; !raw.getParts(i).empty(); ++i)
  {
    check(endsIn(raw.getParts(i), '/'));
  }

  unsigned int const nameStart = mio::pathComponentLength(text);
  check(nameStart <= text.length());
  cString name(text);
  name.erase(0, nameStart);
  cString changed(text);
  mio::cFileInfo::setFilePath(changed, other);
  check(changed.length() >= other.length() + name.length());
  changed = text;
  mio::cFileInfo::setFileNameSuffix(changed, other);
  cString const once(changed);
  mio::cFileInfo::setFileNameSuffix(changed, other);
  // A suffix that divides the name anew, or makes one of `.` or `..`, is put in again.
  bool isNewName = name.empty() && endsIn(text, '.');
  for (unsigned int i = 0; i < other.length(); ++i)
  {
    isNewName = isNewName || other[i] == '.' || other[i] == ':' || isSeparator(other[i]);
  }
  check(isNewName || changed == once);
  mio::cFileInfo::setFileName(changed, other, true);
  mio::cFileInfo::setFileNamePrefix(changed, other);
  mio::cFileInfo::setFileNameExtension(changed, other);
  check(changed.length() >= other.length());
  return 0;
}
