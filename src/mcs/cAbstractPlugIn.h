#ifndef MORTISE_MCS_CABSTRACTPLUGIN_H
#define MORTISE_MCS_CABSTRACTPLUGIN_H

#include "mcs/cAbstractModule.h"

namespace mce
{
class cAbstractCoreExtension;
}

namespace mcs
{

/// A module from a shared library that is no component: it has no address and takes no part in dependencies.
class MORTISE_API cAbstractPlugIn : public cAbstractModule
{
public:
  explicit cAbstractPlugIn(msa::cReferenceFrame& frame);
  ~cAbstractPlugIn() override;

  bool isPlugIn() const override;
  bool isComponent() const override;
  virtual bool isCoreExtension() const;
  /// mstd::cRuntimeException with the name of the module: it is none.
  virtual mce::cAbstractCoreExtension& coreExtension() const;
  /// "none"
  virtual mstd::cAsciiString pluginTypeName() const;
};

} // namespace mcs

#endif
