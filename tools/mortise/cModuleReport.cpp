#include "cModuleReport.h"

#include "cJsonText.h"
#include "cLibraryTree.h"
#include "cMessage.h"
#include "pi/piVersion.h"

#include <algorithm>
#include <cxxabi.h>
#include <set>
#include <stdlib.h>

namespace
{
char const* const Entries[] = {"moduleVersion", "kroVersion", "moduleInitComponent", "moduleInitPlugIn"};
size_t const MostShown = 10;
size_t const MostPrintedLines = 20;
size_t const LongestSymbol = 4096;

char const* kindOf(cElfFile::Problem eProblem)
{
  switch (eProblem)
  {
  case cElfFile::Unreadable:
    return "unreadable";
  case cElfFile::Directory:
    return "directory";
  case cElfFile::NotRegular:
    return "not-regular";
  case cElfFile::NotElf:
    return "not-elf";
  case cElfFile::Truncated:
    return "truncated";
  case cElfFile::NoLibrary:
    return "no-library";
  default:
    return "damaged";
  }
}

// Everything that comes from a module or from its file goes through here on its way to people.
std::string row(std::string const& indent, std::string label, std::string const& value)
{
  size_t const width = 14;
  label.resize(std::max(width, label.size() + 1), ' ');
  return value.empty() ? std::string() : indent + label + cMessage::clean(value) + "\n";
}

std::string joined(std::vector<std::string> const& texts, char const* pBetween)
{
  std::string result;
  for (std::string const& text : texts)
  {
    result += (result.empty() ? "" : pBetween) + text;
  }
  return result;
}

std::string behind(char const* pLead, std::string const& text)
{
  return text.empty() ? std::string() : pLead + text;
}

std::string memberText(cModuleProbe::cMember const& member)
{
  return (member.mResult.empty() ? std::string() : member.mResult + " ") + member.mName + "(" + member.mParameters +
         ")" + behind(": ", member.mDescription);
}

std::string interfaceText(cModuleProbe::cInterface const& interface)
{
  return interface.mName + " " + interface.mVersion + behind(", by ", interface.mAuthor) +
         behind(": ", interface.mDescription);
}
} // namespace

cModuleReport::cModuleReport(std::string const& path)
    : mPath(path), mFile(path.find('/') == std::string::npos ? "./" + path : path) // else the loader searches for it
{
}

cModuleReport::~cModuleReport() = default;

std::string cModuleReport::shown(std::string const& symbol) const
{
  auto const found = mReadable.find(symbol);
  return found == mReadable.end() ? symbol : found->second;
}

void cModuleReport::make(bool bLoads, unsigned int iSeconds)
{
  bool const bReads = mFile.read();
  if (mFile.problem() == cElfFile::Unreadable || mFile.problem() == cElfFile::Directory ||
      mFile.problem() == cElfFile::NotRegular || mFile.problem() == cElfFile::NotElf)
  {
    mProblems.push_back({kindOf(mFile.problem()), mFile.explanation()});
    return;
  }
  cElfFile tool("/proc/self/exe");
  if (tool.readHeader() && mFile.processor().compare(0, 10, "processor ") != 0 && !mFile.isForProcessorOf(tool))
  {
    mProblems.push_back(
        {"other-processor", "is for another processor: " + mFile.processor() + "; this is " + tool.processor()});
  }
  if (!bReads)
  {
    mProblems.push_back({kindOf(mFile.problem()), mFile.explanation()});
    return;
  }
  lookAtEntries();
  addHolders(mFile, mHolders);
  if (!mProblems.empty())
  {
    return;
  }
  mTree = std::make_unique<cLibraryTree>(mFile.path());
  if (bLoads)
  {
    mProbe = std::make_unique<cModuleProbe>(mFile.path(), iSeconds);
    mProbe->run();
    lookAtLoading();
  }
  else
  {
    lookAtMissing(std::string());
  }
  lookAtUnloading();
}

// To read a forged name may take time and memory without end.
void cModuleReport::learn(std::vector<std::string> const& symbols)
{
  if (symbols.empty())
  {
    return;
  }
  cChildProcess child;
  child.run(
      [&symbols](cChildProcess::cTeller const& teller) {
        for (std::string const& name : symbols)
        {
          int status = 0;
          char* const pReadable = name.size() > LongestSymbol || name.compare(0, 2, "_Z") != 0
                                      ? nullptr
                                      : abi::__cxa_demangle(name.c_str(), nullptr, nullptr, &status);
          if (pReadable != nullptr && status == 0)
          {
            std::string readable(pReadable);
            readable.resize(std::min(readable.size(), LongestSymbol));
            teller.tell({name, readable});
          }
          free(pReadable);
        }
      },
      2);
  for (cChildProcess::tMessage const& message : child.messages())
  {
    if (message.size() == 2)
    {
      mReadable[message[0]] = message[1];
    }
  }
}

void cModuleReport::lookAtEntries()
{
  std::vector<std::string> missing;
  std::vector<std::string> decorated;
  for (char const* const pEntry : Entries)
  {
    cElfFile::cSymbol const* const pSymbol = mFile.exported(pEntry);
    if (pSymbol != nullptr && pSymbol->mCallable)
    {
      mEntries.push_back(pEntry);
      continue;
    }
    missing.push_back(pEntry);
    std::string const start = "_Z" + std::to_string(std::string(pEntry).size()) + pEntry;
    for (cElfFile::cSymbol const& symbol : mFile.symbols())
    {
      if (symbol.mDefined && symbol.mName.compare(0, start.size(), start) == 0)
      {
        decorated.emplace_back(symbol.mName);
        break;
      }
    }
  }
  learn(decorated);
  for (std::string const& symbol : decorated)
  {
    mNotes.push_back({"decorated", "it exports " + shown(symbol) +
                                       " under a decorated name: extern \"C\" is missing, which MORTISE_MODULE adds"});
  }
  auto const lacks = [&missing](char const* pEntry) {
    return std::find(missing.begin(), missing.end(), pEntry) != missing.end();
  };
  if (missing.size() == std::size(Entries))
  {
    mProblems.push_back({"no-module", "is no module: it exports no entry point of one, as MORTISE_MODULE makes them"});
    return;
  }
  for (char const* const pEntry : {"moduleVersion", "kroVersion"})
  {
    if (lacks(pEntry))
    {
      mProblems.push_back({"missing-entry", std::string("is no module: it does not export ") + pEntry});
    }
  }
  if (lacks("moduleInitComponent") && lacks("moduleInitPlugIn"))
  {
    mProblems.push_back({"missing-entry", "is no module: it exports neither moduleInitComponent nor moduleInitPlugIn"});
  }
}

// What the loader says is true, and often short.
void cModuleReport::lookAtMissing(std::string const& reason)
{
  size_t const before = mProblems.size();
  for (cLibraryTree::cLibrary const& library : mTree->libraries())
  {
    if (!library.mFound)
    {
      mProblems.push_back(
          {"missing-library", "lacks the library " + library.mName + ", which " +
                                  (library.mNeededBy == mFile.path() ? "it needs" : library.mNeededBy + " needs") +
                                  (library.mWhyNot.empty() ? ": it is not found" : ": " + library.mWhyNot)});
    }
  }
  if (mProblems.size() == before)
  {
    std::vector<cLibraryTree::cMissingSymbol> const symbols = mTree->missingSymbols();
    std::vector<std::string> names;
    for (size_t i = 0; i < symbols.size() && i < MostShown; ++i)
    {
      names.push_back(symbols[i].mName);
    }
    learn(names);
    for (size_t i = 0; i < names.size(); ++i)
    {
      mProblems.push_back(
          {"missing-symbol", "lacks the symbol " + shown(symbols[i].mName) + ", which " +
                                 (symbols[i].mNeededBy == mFile.path() ? "it needs" : symbols[i].mNeededBy + " needs") +
                                 ": no library has it"});
    }
    if (symbols.size() > MostShown)
    {
      mProblems.push_back({"missing-symbol", "lacks " + std::to_string(symbols.size() - MostShown) + " more symbols"});
    }
  }
  if (mFile.isNeverOpened())
  {
    mProblems.push_back({"not-loadable", "is linked with -z nodlopen, so that no program can load it"});
  }
  if (!reason.empty() && mProblems.size() == before)
  {
    mProblems.push_back({"not-loadable", "cannot be loaded: " + reason});
  }
  else if (!reason.empty())
  {
    mNotes.push_back({"loader", "the loader says: " + reason});
  }
}

void cModuleReport::lookAtLoading()
{
  if (!mProbe->isLoaded())
  {
    if (mProbe->isBroken())
    {
      mProblems.push_back({"broken", mProbe->loadFailure() + " when it is loaded"});
    }
    else
    {
      lookAtMissing(mProbe->loadFailure());
    }
  }
  for (std::string const& failure : mProbe->failures())
  {
    mProblems.push_back({"broken", failure});
  }
  std::string const here = std::to_string(MORTISE_VERSION_MAJOR) + "." + std::to_string(MORTISE_VERSION_MINOR);
  if (!mProbe->frameworkVersion().empty() && mProbe->frameworkVersion() != here)
  {
    mNotes.push_back({"other-framework", "it is built for version " + mProbe->frameworkVersion() +
                                             " of the framework, and this is " + here});
  }
  if (!mProbe->threads().empty())
  {
    mNotes.push_back({"threads", mProbe->threads() +
                                     " threads of it still run when nothing of it is in use any more: they crash when "
                                     "it is unloaded"});
  }
}

void cModuleReport::addHolders(cElfFile const& file, std::vector<cPoint>& holders)
{
  if (file.isNeverUnloaded())
  {
    holders.push_back({"nodelete", "it is linked with -z nodelete"});
  }
  size_t unique = 0;
  std::vector<std::string> names;
  for (cElfFile::cSymbol const& symbol : file.symbols())
  {
    if (symbol.mUnique && symbol.mDefined && ++unique <= MostShown)
    {
      names.emplace_back(symbol.mName);
    }
    if (symbol.mName == "__cxa_thread_atexit" || symbol.mName == "__cxa_thread_atexit_impl")
    {
      holders.push_back({"thread-local", "it has thread_local variables with a destructor, which hold it as long as a "
                                         "thread lives that has used them"});
    }
  }
  learn(names);
  for (std::string const& name : names)
  {
    holders.push_back({"unique-symbol", "it has the unique symbol " + shown(name) +
                                            ", which stays for ever: compile with -fno-gnu-unique"});
  }
  if (unique > MostShown)
  {
    holders.push_back({"unique-symbol", "it has " + std::to_string(unique - MostShown) + " more unique symbols"});
  }
}

void cModuleReport::lookAtUnloading()
{
  bool const bStayed = mProbe && mProbe->hasStayed();
  std::vector<std::string> none;
  for (std::string const& path : mProbe ? mProbe->holders() : none)
  {
    mHolders.push_back({"library", "it is held by " + path + ", which needs it and stays"});
  }
  if (bStayed && mHolders.empty())
  {
    mHolders.push_back({"handle", "it stayed when it was unloaded: something has opened it and does not close it"});
  }
  std::vector<std::string> left = mProbe ? mProbe->leftBehind() : none;
  for (cLibraryTree::cLibrary const& library : mTree->libraries())
  {
    std::vector<cPoint> holders;
    if (library.mFound && !library.mHere)
    {
      addHolders(library.mFile, holders);
    }
    left.erase(std::remove(left.begin(), left.end(), holders.empty() ? std::string() : library.mFile.path()),
               left.end());
    if (!holders.empty())
    {
      mNotes.push_back({"left-behind", library.mName + ", which came with it, stays: " + holders[0].mText});
    }
  }
  for (std::string const& path : left)
  {
    mNotes.push_back({"left-behind", path + " came with it and stays"});
  }
}

std::string cModuleReport::unloading() const
{
  if (mProbe && mProbe->hasStayed())
  {
    return "no";
  }
  if (mProbe && mProbe->hasGone())
  {
    return mHolders.empty() ? "yes" : "not always";
  }
  // A file that is of no use is not asked about.
  return !mHolders.empty() ? "no" : mTree && mProblems.empty() ? "yes" : "";
}

std::string cModuleReport::text() const
{
  std::string const name = cMessage::clean(mPath);
  std::string result;
  if (mProblems.empty())
  {
    result = name + ": a module";
    if (mProbe)
    {
      result += ", version " + cMessage::clean(mProbe->moduleVersion()) + ", for version " +
                cMessage::clean(mProbe->frameworkVersion()) + " of the framework";
    }
    result += "\n";
  }
  for (cPoint const& problem : mProblems)
  {
    result += name + ": unusable: it " + cMessage::clean(problem.mText) + "\n";
  }
  std::string const step = "  ";
  if (mFile.problem() == cElfFile::None)
  {
    result += row(step, "processor", mFile.processor());
    result += row(step, "entry points", joined(mEntries, ", "));
  }
  if (mTree)
  {
    std::string label = "needs";
    for (cLibraryTree::cLibrary const& library : mTree->libraries())
    {
      bool const bDirect = library.mNeededBy == mFile.path();
      if (bDirect || !library.mFound)
      {
        result += row(step, label,
                      library.mName + (library.mFound ? " (" + library.mFile.path() + ")" : " (missing)") +
                          (bDirect ? "" : ", for " + library.mNeededBy));
        label.clear();
      }
    }
  }
  if (!unloading().empty())
  {
    result += row(step, "unloads", unloading());
    for (cPoint const& holder : mHolders)
    {
      result += row(step, "", holder.mText);
    }
  }
  for (cPoint const& note : mNotes)
  {
    result += row(step, "note", note.mText);
  }
  for (cModuleProbe::cObject const& object : mProbe ? mProbe->objects() : std::vector<cModuleProbe::cObject>())
  {
    std::string const more = step + "  ";
    result += row(step, object.mKind, object.mName.empty() ? "(without a name)" : object.mName);
    result += row(more, "type", object.mPlugInType);
    result += row(more, "author", object.mAuthor);
    result += row(more, "description", object.mDescription);
    std::vector<std::string> build;
    for (std::string const& part :
         {object.mCompiler + behind(" ", object.mCompilerVersion), behind("for ", object.mBuildSystem),
          behind("on ", object.mBuildHost), object.mBuildDate,
          object.mBuildCount == "0" ? std::string() : "number " + object.mBuildCount})
    {
      if (!part.empty())
      {
        build.push_back(part);
      }
    }
    result += row(more, "build", joined(build, ", "));
    for (cModuleProbe::cInterface const& interface : object.mInterfaces)
    {
      result += row(more, interface.mSide, interfaceText(interface));
      for (cModuleProbe::cMember const& slot : interface.mSlots)
      {
        result += row(more + "  ", "slot", memberText(slot));
      }
      for (cModuleProbe::cMember const& signal : interface.mSignals)
      {
        result += row(more + "  ", "signal", memberText(signal));
      }
    }
    for (cModuleProbe::cInterface const& wanted : object.mWanted)
    {
      result += row(more, "searches", interfaceText(wanted));
    }
  }
  if (mProbe && !mProbe->printed().empty())
  {
    result += step + "it printed:\n";
    std::string const& printed = mProbe->printed();
    size_t start = 0;
    for (size_t i = 0; i < MostPrintedLines && start < printed.size(); ++i)
    {
      size_t const next = std::min(printed.size(), printed.find('\n', start));
      size_t const end = next > start && printed[next - 1] == '\r' ? next - 1 : next;
      result += step + "  " + cMessage::clean(printed.substr(start, end - start)) + "\n";
      start = next + 1;
    }
    result += start < printed.size() ? step + "  and more\n" : "";
  }
  return result;
}

namespace
{
void addPoints(cJsonText& json, char const* pName, std::vector<cModuleReport::cPoint> const& points)
{
  json.beginList(pName);
  for (cModuleReport::cPoint const& point : points)
  {
    json.beginObject();
    json.add("kind", point.mKind);
    json.add("text", point.mText);
    json.endObject();
  }
  json.endList();
}

void addMembers(cJsonText& json, char const* pName, std::vector<cModuleProbe::cMember> const& members)
{
  json.beginList(pName);
  for (cModuleProbe::cMember const& member : members)
  {
    json.beginObject();
    json.add("name", member.mName);
    json.add("result", member.mResult);
    json.add("parameters", member.mParameters);
    json.add("description", member.mDescription);
    json.endObject();
  }
  json.endList();
}

void addInterfaces(cJsonText& json, char const* pName, std::vector<cModuleProbe::cInterface> const& interfaces,
                   bool bMembers)
{
  json.beginList(pName);
  for (cModuleProbe::cInterface const& interface : interfaces)
  {
    json.beginObject();
    json.add("side", interface.mSide);
    json.add("name", interface.mName);
    json.add("author", interface.mAuthor);
    json.add("version", interface.mVersion);
    json.add("description", interface.mDescription);
    if (bMembers)
    {
      addMembers(json, "slots", interface.mSlots);
      addMembers(json, "signals", interface.mSignals);
    }
    json.endObject();
  }
  json.endList();
}
} // namespace

std::string cModuleReport::json() const
{
  cJsonText json;
  json.beginObject();
  json.add("file", mPath);
  json.add("usable", isUsable());
  addPoints(json, "problems", mProblems);
  addPoints(json, "notes", mNotes);
  if (mFile.problem() == cElfFile::None)
  {
    json.add("processor", mFile.processor());
    json.addAll("entryPoints", mEntries);
    json.beginList("libraries");
    std::list<cLibraryTree::cLibrary> const none;
    for (cLibraryTree::cLibrary const& library : mTree ? mTree->libraries() : none)
    {
      json.beginObject();
      json.add("name", library.mName);
      json.add("neededBy", library.mNeededBy);
      library.mFound ? json.add("path", library.mFile.path()) : json.addNull("path");
      json.endObject();
    }
    json.endList();
    json.beginObject("unloading");
    unloading().empty() ? json.addNull("can") : json.add("can", unloading());
    mProbe && (mProbe->hasGone() || mProbe->hasStayed()) ? json.add("seen", mProbe->hasGone()) : json.addNull("seen");
    addPoints(json, "holders", mHolders);
    json.endObject();
  }
  if (mProbe)
  {
    mProbe->moduleVersion().empty() ? json.addNull("version") : json.add("version", mProbe->moduleVersion());
    mProbe->frameworkVersion().empty() ? json.addNull("frameworkVersion")
                                       : json.add("frameworkVersion", mProbe->frameworkVersion());
    json.beginList("objects");
    for (cModuleProbe::cObject const& object : mProbe->objects())
    {
      json.beginObject();
      json.add("kind", object.mKind);
      json.add("name", object.mName);
      json.add("author", object.mAuthor);
      json.add("description", object.mDescription);
      json.beginObject("build");
      json.add("compiler", object.mCompiler);
      json.add("compilerVersion", object.mCompilerVersion);
      json.add("system", object.mBuildSystem);
      json.add("host", object.mBuildHost);
      json.add("date", object.mBuildDate);
      json.add("count", object.mBuildCount);
      json.endObject();
      if (object.mKind == "plug-in")
      {
        json.add("type", object.mPlugInType);
      }
      addInterfaces(json, "interfaces", object.mInterfaces, true);
      addInterfaces(json, "searches", object.mWanted, false);
      json.endObject();
    }
    json.endList();
    json.add("printed", mProbe->printed());
  }
  json.endObject();
  return json.text() + "\n";
}
