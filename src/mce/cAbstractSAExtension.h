#ifndef MORTISE_MCE_CABSTRACTSAEXTENSION_H
#define MORTISE_MCE_CABSTRACTSAEXTENSION_H

#include "mce/cAbstractCoreExtension.h"
#include "std/tAutoPtr.h"
#include "std/tConstArrayRef.h"

namespace msa
{
class cAbstractDeserializer;
class cAbstractSerializer;
} // namespace msa

namespace mucs
{
class cString;
}

namespace mce
{

/// Makes serializers and deserializers.
class MORTISE_API cAbstractSAExtension : public cAbstractCoreExtension
{
public:
  ~cAbstractSAExtension() override;
  ExtensionType extensionType() const override;
  virtual mstd::tAutoPtr<msa::cAbstractSerializer> createSerializer(mstd::cAsciiString const& argument) = 0;
  /// Reads these bytes, which must outlive it.
  virtual mstd::tAutoPtr<msa::cAbstractDeserializer> createDeserializer(mstd::tConstArrayRef<char> const& data) = 0;
  /// Reads this file.
  virtual mstd::tAutoPtr<msa::cAbstractDeserializer> createDeserializer(mucs::cString const& file) = 0;
};

} // namespace mce

#endif
