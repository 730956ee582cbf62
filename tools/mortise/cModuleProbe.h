#ifndef MORTISE_TOOLS_CMODULEPROBE_H
#define MORTISE_TOOLS_CMODULEPROBE_H

#include "cChildProcess.h"

#include <string>
#include <vector>

/// Loads a module library as a program does, makes what it offers, asks that for what it tells of itself, and unloads
/// the library again: all in a process of its own.
class cModuleProbe
{
public:
  struct cMember
  {
    std::string mName;
    std::string mResult;
    std::string mParameters;
    std::string mDescription;
  };

  struct cInterface
  {
    std::string mSide;
    std::string mName;
    std::string mAuthor;
    std::string mVersion;
    std::string mDescription;
    std::vector<cMember> mSlots;
    std::vector<cMember> mSignals;
  };

  /// A component or a plug-in.
  struct cObject
  {
    std::string mKind;
    std::string mName;
    std::string mAuthor;
    std::string mDescription;
    std::string mCompiler;
    std::string mCompilerVersion;
    std::string mBuildSystem;
    std::string mBuildHost;
    std::string mBuildDate;
    std::string mBuildCount;
    std::string mPlugInType; // of a plug-in
    std::vector<cInterface> mInterfaces;
    std::vector<cInterface> mWanted; // what a component searches for
  };

  cModuleProbe(std::string const& path, unsigned int iSeconds) : mPath(path), miSeconds(iSeconds) {}

  void run();

  /// Whether the library could be loaded; if not, why.
  bool isLoaded() const { return mLoaded; }
  std::string const& loadFailure() const { return mLoadFailure; }
  /// What went wrong afterwards, as the end of a sentence that begins with the name of the file.
  std::vector<std::string> const& failures() const { return mFailures; }
  /// Whether it ended otherwise than by having done all, by a crash for example.
  bool isBroken() const { return mBroken; }
  std::string const& moduleVersion() const { return mModuleVersion; }
  std::string const& frameworkVersion() const { return mFrameworkVersion; }
  std::vector<cObject> const& objects() const { return mObjects; }
  /// Whether it was seen to go, or to stay, when it was unloaded.
  bool hasGone() const { return mGone; }
  bool hasStayed() const { return mStayed; }
  /// The libraries that need it and stay themselves.
  std::vector<std::string> const& holders() const { return mHolders; }
  /// The libraries that came with it and did not go with it.
  std::vector<std::string> const& leftBehind() const { return mLeftBehind; }
  /// How many threads still ran when nothing of the module was in use any more.
  std::string const& threads() const { return mThreads; }
  std::string const& printed() const { return mPrinted; }

private:
  void work(cChildProcess::cTeller const& teller) const;
  void understand(cChildProcess::tMessage const& message);
  cInterface* lastInterface();

  std::string mPath;
  unsigned int miSeconds;
  bool mLoaded = false;
  bool mBroken = false;
  bool mGone = false;
  bool mStayed = false;
  std::string mStage;
  std::string mLoadFailure;
  std::vector<std::string> mFailures;
  std::string mModuleVersion;
  std::string mFrameworkVersion;
  std::vector<cObject> mObjects;
  std::vector<std::string> mHolders;
  std::vector<std::string> mLeftBehind;
  std::string mThreads;
  std::string mPrinted;
};

#endif
