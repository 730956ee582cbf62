#include "cModuleProbe.h"

#include "cElfFile.h"
#include "cLoadedLibraries.h"
#include "cMessage.h"
#include "io/cFs.h"
#include "mcs/cAbstractComponent.h"
#include "mcs/cAbstractInterface.h"
#include "mcs/cAbstractPlugIn.h"
#include "mcs/cInterfaceDep.h"
#include "mcs/cModuleLoadException.h"
#include "mcs/cModuleMgr.h"
#include "pi/cAbstractClassLoader.h"
#include "pi/cAbstractProcessEvents.h"
#include "pi/cPlatform.h"
#include "pi/cSystem.h"
#include "pi/cWorkQueue.h"
#include "rmi/cPublicSignal.h"
#include "rmi/cPublicSlot.h"
#include "sa/cReferenceFrame.h"
#include "std/cAbstractException.h"
#include "std/cConstCStringRef.h"
#include "std/tConstArrayRef.h"
#include "ucs/cAbstractEnDec.h"
#include "ucs/cString.h"

#include <exception>
#include <filesystem>
#include <new>

namespace fs = std::filesystem;

namespace
{
typedef cChildProcess::cTeller cTeller;

std::string text(mstd::cAsciiString const& string)
{
  return std::string(string.c_str(), string.length());
}

size_t threadCount()
{
  std::error_code error;
  size_t count = 0;
  for (fs::directory_iterator i("/proc/self/task", error), end; !error && i != end; i.increment(error))
  {
    ++count;
  }
  return count;
}

// What a function raises, told as a failure of `pStage`.
template <class Function>
bool tryTo(cTeller const& teller, char const* pStage, Function const& function)
{
  teller.tell({"stage", pStage});
  std::string reason;
  try
  {
    function();
    return true;
  }
  catch (mcs::cModuleLoadException const& e)
  {
    mucs::cString problem;
    e.problem().untranslated(problem);
    reason = cMessage::bytes(problem);
  }
  catch (mstd::cAbstractException const& e)
  {
    reason = cMessage::of(e);
  }
  catch (std::bad_alloc const&)
  {
    reason = "out of memory";
  }
  catch (std::exception const& e)
  {
    reason = e.what();
  }
  catch (...)
  {
    reason = "an exception of a class that is not known here";
  }
  teller.tell({"failed", pStage, reason});
  return false;
}

// The types, with the names where they are known.
std::string parameterText(mrmi::cPublicDescription const& member)
{
  std::string result;
  for (unsigned int i = 0; i < member.parameters().length(); ++i)
  {
    mrmi::cSSValue const& parameter = member.parameters()[i];
    std::string const name = text(parameter.description());
    result += (i == 0 ? "" : ", ") + text(parameter.typeName()) + (parameter.isAlterable() ? "&" : "") +
              (name.empty() ? "" : " " + name);
  }
  return result.empty() ? text(member.paramTypeNames()) : result;
}

template <class Member>
void tellMember(cTeller const& teller, char const* pKind, Member const& member)
{
  teller.tell(
      {pKind, text(member.name()), text(member.returnTypeName()), parameterText(member), text(member.description())});
}

void tellInterface(cTeller const& teller, char const* pKind, mcs::cInterfaceDesc const& desc)
{
  teller.tell({pKind, desc.type() == mcs::cInterfaceDesc::Providing ? "provides" : "requires", text(desc.name()),
               text(desc.author()), std::to_string(desc.version()), text(desc.description())});
}

void tellModule(cTeller const& teller, mcs::cAbstractModule& module, char const* pKind, std::string const& plugInType)
{
  mcs::cModuleInfo const& info = module.info();
  mstd::cBuildInfo const& build = info.buildInfo();
  teller.tell({"object", pKind, text(info.name()), text(info.author()), text(info.description()),
               text(build.compiler()), text(build.compilerVersion()), text(build.buildSystem()),
               text(build.buildHost()), text(build.buildDate()), std::to_string(build.buildCount()), plugInType});
  for (unsigned int i = 0; i < module.numInterfaces(); ++i)
  {
    mcs::cAbstractInterface const& interface = module.interface(i);
    tellInterface(teller, "interface", interface.desc());
    if (interface.hasPublicSlots() != nullptr)
    {
      for (mrmi::cPublicSlot const* pSlot : *interface.hasPublicSlots())
      {
        tellMember(teller, "slot", *pSlot);
      }
    }
    if (interface.hasPublicSignals() != nullptr)
    {
      for (mrmi::cPublicSignal const* pSignal : *interface.hasPublicSignals())
      {
        tellMember(teller, "signal", *pSignal);
      }
    }
  }
}

void tryComponent(cTeller const& teller, mpi::cAbstractClassLoader& loader)
{
  mcs::cModuleMgr manager(mpi::system().extensions);
  msa::cReferenceFrame frame;
  mstd::tAutoPtr<mcs::cAbstractComponent> component;
  if (!tryTo(teller, "make its component", [&] {
        component.reinit(loader.instance(frame, manager));
        component->setClassLoader(&loader, "");
      }))
  {
    return;
  }
  tryTo(teller, "ask its component", [&] {
    tellModule(teller, *component, "component", "");
    mstd::tPtrVector<mcs::cInterfaceDep> const& wanted = component->interfaceDeps();
    for (unsigned int i = 0; i < wanted.length(); ++i)
    {
      tellInterface(teller, "wanted", wanted[i]->wanted());
    }
  });
  tryTo(teller, "destroy its component", [&component] { component.reinit(nullptr); });
}

void tryPlugIn(cTeller const& teller, mpi::cAbstractClassLoader& loader)
{
  msa::cReferenceFrame frame;
  mstd::tAutoPtr<mcs::cAbstractPlugIn> plugIn;
  if (!tryTo(teller, "make its plug-in", [&] {
        plugIn.reinit(loader.instance(frame));
        plugIn->setClassLoader(&loader, "");
      }))
  {
    return;
  }
  tryTo(teller, "ask its plug-in", [&] {
    std::string const type = text(plugIn->pluginTypeName());
    tellModule(teller, *plugIn, "plug-in", plugIn->isCoreExtension() ? "core extension " + type : type);
  });
  tryTo(teller, "destroy its plug-in", [&plugIn] { plugIn.reinit(nullptr); });
}
} // namespace

void cModuleProbe::work(cTeller const& teller) const
{
  cElfFile file(mPath);
  file.read();
  bool const bPlugIn = file.exported("moduleInitPlugIn") != nullptr;
  bool const bComponent = file.exported("moduleInitComponent") != nullptr;
  cLoadedLibraries const before;
  size_t const threads = threadCount();
  mstd::tAutoPtr<mpi::cAbstractClassLoader> loader;
  bool const bLoaded = tryTo(teller, "load", [&] {
    mpi::system().wq.setEvents(mpi::cPlatform::createProcessEvents());
    mstd::cConstCStringRef const bytes(mPath.c_str());
    mucs::cString name;
    mpi::system().fs.endec().decode(mstd::tConstArrayRef<char>(bytes), name);
    loader = mpi::cPlatform::createClassLoader(name);
  });
  if (!bLoaded)
  {
    return;
  }
  tryTo(teller, "ask for its versions", [&] {
    unsigned int numbers[4] = {};
    loader->getModuleVersion(numbers[0], numbers[1]);
    loader->getModuleKROVersion(numbers[2], numbers[3]);
    teller.tell({"versions", std::to_string(numbers[0]) + "." + std::to_string(numbers[1]),
                 std::to_string(numbers[2]) + "." + std::to_string(numbers[3])});
  });
  if (bComponent)
  {
    tryComponent(teller, *loader);
  }
  if (bPlugIn)
  {
    tryPlugIn(teller, *loader);
  }
  size_t const more = threadCount();
  if (more > threads)
  {
    teller.tell({"threads", std::to_string(more - threads)});
  }
  if (!tryTo(teller, "unload", [&loader] { loader.reinit(nullptr); }))
  {
    return;
  }
  cLoadedLibraries const after;
  bool const bStayed = after.has(mPath) && !before.has(mPath);
  for (std::string const& path : after.paths())
  {
    std::error_code error;
    if (before.has(path) || fs::equivalent(path, mPath, error))
    {
      continue;
    }
    teller.tell({"left", path});
    cElfFile other(path);
    if (bStayed && other.read())
    {
      for (std::string const& name : other.needed())
      {
        if (name == file.soName() || name == fs::path(mPath).filename().string() || fs::equivalent(name, mPath, error))
        {
          teller.tell({"holder", path});
          break;
        }
      }
    }
  }
  teller.tell({bStayed ? "stayed" : "gone"});
  teller.tell({"stage", "end"});
}

cModuleProbe::cInterface* cModuleProbe::lastInterface()
{
  return mObjects.empty() || mObjects.back().mInterfaces.empty() ? nullptr : &mObjects.back().mInterfaces.back();
}

void cModuleProbe::understand(cChildProcess::tMessage const& message)
{
  std::string const kind = message.empty() ? std::string() : message[0];
  size_t const length = message.size();
  if (kind == "stage" && length == 2)
  {
    mLoaded = mLoaded || mStage == "load";
    mStage = message[1];
  }
  else if (kind == "failed" && length == 3)
  {
    if (message[1] == "load")
    {
      mLoadFailure = message[2];
      mStage.clear();
    }
    else
    {
      mFailures.push_back("fails when it is to " + message[1] + ": " + message[2]);
    }
  }
  else if (kind == "versions" && length == 3)
  {
    mModuleVersion = message[1];
    mFrameworkVersion = message[2];
  }
  else if (kind == "object" && length == 12)
  {
    cObject object;
    std::string* const fields[] = {&object.mKind,        &object.mName,      &object.mAuthor,
                                   &object.mDescription, &object.mCompiler,  &object.mCompilerVersion,
                                   &object.mBuildSystem, &object.mBuildHost, &object.mBuildDate,
                                   &object.mBuildCount,  &object.mPlugInType};
    for (size_t i = 0; i + 1 < length; ++i)
    {
      *fields[i] = message[i + 1];
    }
    mObjects.push_back(object);
  }
  else if ((kind == "interface" || kind == "wanted") && length == 6 && !mObjects.empty())
  {
    cInterface interface;
    interface.mSide = message[1];
    interface.mName = message[2];
    interface.mAuthor = message[3];
    interface.mVersion = message[4];
    interface.mDescription = message[5];
    (kind == "wanted" ? mObjects.back().mWanted : mObjects.back().mInterfaces).push_back(interface);
  }
  else if ((kind == "slot" || kind == "signal") && length == 5 && lastInterface() != nullptr)
  {
    cMember const member = {message[1], message[2], message[3], message[4]};
    (kind == "slot" ? lastInterface()->mSlots : lastInterface()->mSignals).push_back(member);
  }
  else if (kind == "threads" && length == 2)
  {
    mThreads = message[1];
  }
  else if (kind == "left" && length == 2)
  {
    mLeftBehind.push_back(message[1]);
  }
  else if (kind == "holder" && length == 2)
  {
    mHolders.push_back(message[1]);
  }
  mStayed = mStayed || kind == "stayed";
  mGone = mGone || kind == "gone";
}

void cModuleProbe::run()
{
  cChildProcess child;
  cChildProcess::End const eEnd = child.run([this](cTeller const& teller) { work(teller); }, miSeconds);
  for (cChildProcess::tMessage const& message : child.messages())
  {
    understand(message);
  }
  mPrinted = child.printed();
  if (eEnd != cChildProcess::Ended)
  {
    mBroken = true;
    std::string const when = mStage.empty() ? "" : " when it is to " + mStage;
    if (mStage == "load" || mStage.empty())
    {
      mLoadFailure = child.explanation();
    }
    else
    {
      mFailures.push_back(child.explanation() + when);
    }
  }
}
