#ifndef MORTISE_TESTS_SUPPORT_CTESTEXTENSION_H
#define MORTISE_TESTS_SUPPORT_CTESTEXTENSION_H

#include "mce/cAbstractEnDecExtension.h"
#include "mce/cAbstractSAExtension.h"
#include "mce/cNetAbstractAddressExtension.h"
#include "mce/net++/cNetAbstractAddress.h"
#include "sa/cDeserializeBinary.h"
#include "sa/cSerializeBinary.h"
#include "std/cAsciiString.h"
#include "std/cBuildInfo.h"
#include "std/tVector.h"
#include "support/cByteEnDec.h"
#include "ucs/cString.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace support
{

/// What core extensions that are linked into a test were asked for, and when they went.
typedef std::vector<std::string> tExtensionNotes;

/// The common part of such an extension: supports one name, and writes down all that it is called with.
template <class Base>
class tTestExtension : public Base
{
public:
  tTestExtension(std::string name, std::string supported, tExtensionNotes& notes)
      : mName(std::move(name)), mSupported(std::move(supported)), mNotes(notes)
  {
  }
  ~tTestExtension() override
  {
    note("gone");
    if (mAtEnd)
    {
      mAtEnd();
    }
  }

  mstd::cAsciiString description() const override { return mstd::cAsciiString(mName.c_str()); }
  mstd::cBuildInfo const& buildInfo() const override { return mBuildInfo; }
  bool supports(mstd::cAsciiString const& name) const override
  {
    note("supports " + std::string(name.c_str()));
    return name == mSupported.c_str();
  }
  void provides(mstd::tVector<mstd::cAsciiString>& names) const override
  {
    names.append(mstd::cAsciiString((mName + ":" + mSupported).c_str()));
  }

  std::function<void()> mAtEnd;

protected:
  void note(std::string const& what) const { mNotes.push_back(mName + " " + what); }

private:
  std::string mName;
  std::string mSupported;
  tExtensionNotes& mNotes;
  mstd::cBuildInfo mBuildInfo;
};

class cTestEnDecExtension : public tTestExtension<mce::cAbstractEnDecExtension>
{
public:
  using tTestExtension::tTestExtension;
  mstd::tAutoPtr<mucs::cAbstractEnDec> createEnDec(mstd::cAsciiString const& name) override
  {
    note("makes " + std::string(name.c_str()));
    return mstd::tAutoPtr<mucs::cAbstractEnDec>(new cByteEnDec);
  }
};

class cTestSAExtension : public tTestExtension<mce::cAbstractSAExtension>
{
public:
  using tTestExtension::tTestExtension;
  mstd::tAutoPtr<msa::cAbstractSerializer> createSerializer(mstd::cAsciiString const& argument) override
  {
    note("writes " + std::string(argument.c_str()));
    return mstd::tAutoPtr<msa::cAbstractSerializer>(new msa::cSerializeBinary);
  }
  mstd::tAutoPtr<msa::cAbstractDeserializer> createDeserializer(mstd::tConstArrayRef<char> const& data) override
  {
    note("reads " + std::to_string(data.length()) + " bytes");
    return mstd::tAutoPtr<msa::cAbstractDeserializer>(new msa::cDeserializeBinary(data));
  }
  mstd::tAutoPtr<msa::cAbstractDeserializer> createDeserializer(mucs::cString const& file) override
  {
    note("reads the file " + std::string(file.ascii('?').c_str()));
    return mstd::tAutoPtr<msa::cAbstractDeserializer>(new msa::cDeserializeBinary);
  }
};

/// A network address that is a text.
class cTestAddress : public mce::cNetAbstractAddress
{
public:
  mstd::cAsciiString addrType() const override { return mstd::cAsciiString("text"); }
  void fromString(mstd::cAsciiString const& text) override { mText = text; }
  mstd::cAsciiString toString(int) const override { return mText; }
  mstd::tAutoPtr<mce::cNetAbstractAddress> createCopy() const override
  {
    return mstd::tAutoPtr<mce::cNetAbstractAddress>(new cTestAddress(*this));
  }
  bool isEqual(mce::cNetAbstractAddress const& other) const override { return other.toString(0) == mText; }
  bool isThisHost() const override { return false; }
  mstd::tAutoPtr<mce::cNetAbstractAddress> newAddress() const override
  {
    return mstd::tAutoPtr<mce::cNetAbstractAddress>(new cTestAddress);
  }

private:
  mstd::cAsciiString mText;
};

class cTestAddressExtension : public tTestExtension<mce::cNetAbstractAddressExtension>
{
public:
  using tTestExtension::tTestExtension;
  mstd::tAutoPtr<mce::cNetAbstractAddress> createNetAddress(mstd::cAsciiString const& name) override
  {
    note("makes " + std::string(name.c_str()));
    return mstd::tAutoPtr<mce::cNetAbstractAddress>(new cTestAddress);
  }
};

} // namespace support

#endif
