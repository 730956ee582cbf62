#include "cTranslationFile.h"

#include "cTrText.h"

#include <algorithm>
#include <filesystem>
#include <set>

bool cTranslationFile::fail(std::string const& path, std::string const& text)
{
  mError = path + ": " + text;
  return false;
}

bool cTranslationFile::load()
{
  if (!mFile.exists())
  {
    return true;
  }
  std::string text;
  if (!mFile.read(text))
  {
    return fail(mFile.path(), mFile.error());
  }
  try
  {
    cTranslationParser const parser(text);
    mHead = parser.head();
    mTail = parser.tail();
    mLongLineEnds = parser.hasLongLineEnds();
    for (cItem const& item : parser.items())
    {
      take(item);
    }
    for (cTranslationParser::cError const& oddity : parser.oddities())
    {
      mProblems.push_back(mFile.path() + ":" + std::to_string(oddity.miLine) +
                          ": a comment that looks like entries but has none: " + oddity.mText);
    }
  }
  catch (cTranslationParser::cError const& e)
  {
    mDamaged = true;
    return fail(mFile.path() + ":" + std::to_string(e.miLine), e.mText);
  }
  for (cItem const& item : mStatements)
  {
    if (item.mKind == cTranslationParser::Include)
    {
      std::string name;
      if (!textOf(item, mFile.path(), name) || !readIncluded(besides(mFile.path(), name), 1))
      {
        return false;
      }
    }
  }
  return true;
}

void cTranslationFile::take(cItem const& item)
{
  std::string const place = mFile.path() + ":" + std::to_string(item.miLine) + ": ";
  bool const bEmpty = item.mValue.mText.empty();
  if (item.mKind == cTranslationParser::Word)
  {
    mProblems.push_back(place + "this has no meaning: " + cTrText::quoted(item.mKey));
    mStatements.push_back(item);
  }
  else if (item.mKind != cTranslationParser::Entry)
  {
    mStatements.push_back(item);
  }
  else if (item.mMark == '~')
  {
    mObsolete.push_back(item);
  }
  else
  {
    auto const inserted = mEntries.emplace(item.mKey, item);
    cItem& first = inserted.first->second;
    if (inserted.second)
    {
      first.mMark = 0; // a translator who fills in a text may leave the comment as it is
      return;
    }
    if (first.mValue.mText.empty())
    {
      first.mValue = item.mValue;
    }
    else if (!bEmpty && first.mValue.source() != item.mValue.source())
    {
      mProblems.push_back(place + "translated before, which counts: " + cTrText::quoted(item.mKey));
      mObsolete.push_back(item);
    }
    first.mNotes.insert(first.mNotes.end(), item.mNotes.begin(), item.mNotes.end());
  }
}

/// Takes note of the keys that an included file translates.
bool cTranslationFile::readIncluded(std::string const& path, unsigned int iDepth)
{
  if (iDepth > MaxDepth)
  {
    mDamaged = true;
    return fail(path, "includes go too deep");
  }
  cTextFile file(path);
  std::string text;
  if (!file.read(text))
  {
    return fail(path, file.error());
  }
  try
  {
    cTranslationParser const parser(text);
    for (cItem const& item : parser.items())
    {
      std::string name;
      if (item.mKind == cTranslationParser::Entry && item.mMark == 0)
      {
        bool const bNew = mElsewhere.emplace(item.mKey, path).second;
        if (bNew && item.mValue.mText.empty())
        {
          mProblems.push_back(path + ":" + std::to_string(item.miLine) +
                              ": translated by nothing, which counts: " + cTrText::quoted(item.mKey));
        }
      }
      else if (item.mKind == cTranslationParser::Include &&
               (!textOf(item, path, name) || !readIncluded(besides(path, name), iDepth + 1)))
      {
        return false;
      }
    }
  }
  catch (cTranslationParser::cError const& e)
  {
    mDamaged = true;
    return fail(path + ":" + std::to_string(e.miLine), e.mText);
  }
  return true;
}

/// The path of a file that is named in another one.
std::string cTranslationFile::besides(std::string const& path, std::string const& name) const
{
  return (std::filesystem::path(path).parent_path() / name).string();
}

/// What the value of a statement of the file at `path` stands for.
bool cTranslationFile::textOf(cItem const& item, std::string const& path, std::string& text) const
{
  text = cTrText::decode(item.mValue.mText);
  std::string content;
  if (item.mValue.mFromFile)
  {
    if (!cTextFile(besides(path, text)).read(content))
    {
      return false; // the text names the file
    }
    text.swap(content);
  }
  return true;
}

void cTranslationFile::setName(std::string const& name)
{
  for (cItem& item : mStatements)
  {
    if (item.mKind == cTranslationParser::Name)
    {
      item.mValue.mText = cTrText::encode(name);
      item.mValue.mFromFile = false;
      return;
    }
  }
  cItem item;
  item.mKind = cTranslationParser::Name;
  item.mValue.mText = cTrText::encode(name);
  mStatements.insert(mStatements.begin(), item);
}

void cTranslationFile::fillWithPseudo(cKeyTable const& keys)
{
  mHead.assign(1, " Made from the keys, as if it were a language. Changes are lost when it is made again.");
  for (cKeyTable::cKey const& key : keys.keys())
  {
    cItem& item = mEntries[key.mText];
    item.mKey = key.mText;
    item.mValue.mText = cTrText::encode(cTrText::pseudo(key.mText));
  }
}

cTranslationFile::cItem const* cTranslationFile::find(std::string const& key) const
{
  auto const found = mEntries.find(key);
  if (found != mEntries.end() && !found->second.mValue.mText.empty())
  {
    return &found->second;
  }
  // A key that comes back finds its translation again.
  for (cItem const& item : mObsolete)
  {
    if (item.mKey == key && !item.mValue.mText.empty() && mElsewhere.count(key) == 0)
    {
      return &item;
    }
  }
  return nullptr;
}

cTranslationFile::cReport cTranslationFile::compare(cKeyTable const& keys, Layout eLayout) const
{
  cReport report;
  report.mWrong = mProblems;
  bool bPlain = true;
  for (cItem const& item : mStatements)
  {
    bPlain = bPlain && item.mKind == cTranslationParser::Word;
  }
  for (cKeyTable::cKey const& key : keys.keys())
  {
    cItem const* const pItem = find(key.mText);
    if (pItem != nullptr)
    {
      bPlain = bPlain && !pItem->mValue.mFromFile;
      checkPlaceholders(key, *pItem, report);
    }
    else if (mElsewhere.count(key.mText) != 0)
    {
      report.miTranslated++;
    }
    else
    {
      report.mMissing.push_back(&key);
    }
  }
  std::set<std::string> obsolete;
  for (auto const& entry : mEntries)
  {
    if (!keys.has(entry.first) && !entry.second.mValue.mText.empty())
    {
      obsolete.insert(entry.first);
    }
  }
  for (cItem const& item : mObsolete)
  {
    if (!keys.has(item.mKey))
    {
      obsolete.insert(item.mKey);
    }
  }
  report.miObsolete = static_cast<unsigned int>(obsolete.size());
  if (eLayout == Plain && !bPlain)
  {
    report.mWrong.push_back(mFile.path() + ": has more than a plain translation file may have");
  }
  return report;
}

void cTranslationFile::checkPlaceholders(cKeyTable::cKey const& key, cItem const& item, cReport& report) const
{
  std::string const place = mFile.path() + ": " + cTrText::quoted(key.mText) + ": ";
  std::string text;
  if (!textOf(item, mFile.path(), text))
  {
    report.mWrong.push_back(place + "can't read the file with its translation, " + cTrText::quoted(text));
    report.miWrongKeys++;
    return;
  }
  std::set<std::string> const wanted = cTrText::placeholders(key.mText);
  std::set<std::string> const found = cTrText::placeholders(text);
  std::string differences;
  for (std::string const& name : wanted)
  {
    differences += found.count(name) != 0 ? "" : (differences.empty() ? "lacks " : ", lacks ") + name + "%";
  }
  for (std::string const& name : found)
  {
    differences += wanted.count(name) != 0 ? "" : (differences.empty() ? "adds " : ", adds ") + name + "%";
  }
  if (differences.empty())
  {
    report.miTranslated++;
    return;
  }
  report.mWrong.push_back(place + "its translation " + differences);
  report.miWrongKeys++;
}

void cTranslationFile::print(std::string& out, tLines const& lines) const
{
  for (std::string const& line : lines)
  {
    out += "//" + line + lineEnd();
  }
}

/// An entry, or with a mark the comment that holds one.
void cTranslationFile::printEntry(std::string& out, cItem const& item, char cMark) const
{
  std::string entry;
  if (cMark == '~')
  {
    print(entry, item.mNotes);
  }
  entry += "\"" + cTrText::encode(item.mKey) + "\" =";
  entry += std::string(lineEnd()) + "  " + item.mValue.source() + ";" + lineEnd();
  if (cMark == 0)
  {
    out += entry;
    return;
  }
  bool bLineStart = true;
  for (size_t i = 0; i < entry.size(); i++)
  {
    if (bLineStart)
    {
      out += std::string("//") + cMark + " ";
    }
    out += entry[i];
    bLineStart = entry[i] == '\n' || (entry[i] == '\r' && entry.compare(i + 1, 1, "\n") != 0);
  }
}

/// Comments that name the files with the key.
cTranslationFile::tLines cTranslationFile::files(cKeyTable::cKey const& key)
{
  tLines lines;
  for (cKeyTable::cPlace const& place : key.mPlaces)
  {
    std::string const line = ": " + place.mFile;
    if (std::find(lines.begin(), lines.end(), line) == lines.end())
    {
      lines.push_back(line);
    }
  }
  return lines;
}

std::string cTranslationFile::text(cKeyTable const& keys, bool bObsolete) const
{
  std::string out;
  print(out, mHead);
  out += mHead.empty() || mStatements.empty() ? "" : lineEnd();
  for (cItem const& item : mStatements)
  {
    static char const* const starts[] = {"", "Name = ", "Flag = ", "include "};
    print(out, item.mNotes);
    out += item.mKind == cTranslationParser::Word ? item.mKey : starts[item.mKind] + item.mValue.source();
    out += std::string(";") + lineEnd();
  }
  tLines last;
  for (cKeyTable::cKey const& key : keys.keys())
  {
    cItem const* const pItem = find(key.mText);
    auto const entry = mEntries.find(key.mText);
    if (pItem == nullptr && mElsewhere.count(key.mText) != 0)
    {
      continue;
    }
    cItem missing;
    missing.mKey = key.mText;
    out += out.empty() ? "" : lineEnd();
    tLines const places = files(key);
    if (places != last) // else it belongs to the same group
    {
      print(out, places);
      last = places;
    }
    print(out, pItem != nullptr ? pItem->mNotes : entry != mEntries.end() ? entry->second.mNotes : tLines());
    printEntry(out, pItem != nullptr ? *pItem : missing, pItem != nullptr ? 0 : '?');
  }
  std::vector<cItem> obsolete;
  for (auto const& entry : mEntries)
  {
    if (!keys.has(entry.first) && !entry.second.mValue.mText.empty())
    {
      obsolete.push_back(entry.second);
    }
  }
  for (cItem const& item : mObsolete)
  {
    cItem const* const pUsed = keys.has(item.mKey) ? find(item.mKey) : nullptr;
    if (pUsed == nullptr || pUsed->mValue.source() != item.mValue.source())
    {
      obsolete.push_back(item);
    }
  }
  for (cItem const& item : obsolete)
  {
    if (bObsolete)
    {
      out += out.empty() ? "" : lineEnd();
      printEntry(out, item, '~');
    }
  }
  out += mTail.empty() || out.empty() ? "" : lineEnd();
  print(out, mTail);
  return out;
}

bool cTranslationFile::save(std::string const& text)
{
  return mFile.write(text) || fail(mFile.path(), mFile.error());
}

std::string cTranslationFile::title() const
{
  for (cItem const& item : mStatements)
  {
    std::string name;
    if (item.mKind == cTranslationParser::Name && textOf(item, mFile.path(), name))
    {
      return mFile.path() + " (" + name + ")";
    }
  }
  return mFile.path();
}
