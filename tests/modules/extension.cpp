// A module with a core extension, which makes an encoder of its own.

#include "cLife.h"

#include "mce/cAbstractEnDecExtension.h"
#include "mcs/cAbstractPlugIn.h"
#include "mcs/cMCSExceptions.h"
#include "mcs/module.h"
#include "std/cBuildInfo.h"
#include "std/tVector.h"
#include "ucs/cAbstractEnDec.h"

namespace
{
// What it has not been told how to do fails as for every encoder.
class cEncoder : public mucs::cAbstractEnDec
{
public:
  mstd::cAsciiString name() const override { return mstd::cAsciiString("made in a module"); }
};

class cExtension : public mce::cAbstractEnDecExtension
{
public:
  cExtension(mcs::cModuleInfo const& info, msa::cReferenceFrame& frame) : mLife(frame, "extension"), mInfo(info) {}

  /// With the context of the module, if it has one.
  mstd::cAsciiString description() const override
  {
    return mstd::cAsciiString("an extension of a module") + mInfo.context();
  }
  mstd::cBuildInfo const& buildInfo() const override { return mBuildInfo; }
  bool supports(mstd::cAsciiString const& name) const override { return name == "MODULE"; }
  void provides(mstd::tVector<mstd::cAsciiString>& names) const override { names.append(mstd::cAsciiString("MODULE")); }
  mstd::tAutoPtr<mucs::cAbstractEnDec> createEnDec(mstd::cAsciiString const&) override
  {
    return mstd::tAutoPtr<mucs::cAbstractEnDec>(new cEncoder);
  }

private:
  cLife mLife;
  mcs::cModuleInfo const& mInfo;
  mstd::cBuildInfo mBuildInfo;
};

// With a truth in the frame it breaks its promise when it is asked for its extension.
class cPlugIn : public mcs::cAbstractPlugIn
{
public:
  explicit cPlugIn(msa::cReferenceFrame& frame)
      : cAbstractPlugIn(frame), mExtension(info(), frame), mFails(frame.canRead() && frame.readNext<bool>())
  {
  }

  bool isCoreExtension() const override { return true; }
  mce::cAbstractCoreExtension& coreExtension() const override
  {
    if (mFails)
    {
      mcs::cMCSExceptions::throwUnmatchedInterface();
    }
    return mExtension;
  }

private:
  mutable cExtension mExtension;
  bool mFails;
};
} // namespace

MORTISE_MODULE(1, 0, cPlugIn);
