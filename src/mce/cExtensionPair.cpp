#include "mce/cExtensionPair.h"

#include "mce/cAbstractCoreExtension.h"
#include "mcs/cAbstractPlugIn.h"

namespace mce
{

cExtensionPair::cExtensionPair(mstd::tAutoPtr<cAbstractCoreExtension> pExtension)
    : mpExtension(&*pExtension), mPlugIn(mstd::tAutoPtr<mcs::cAbstractPlugIn>()), mpHolder(pExtension)
{
}

cExtensionPair::cExtensionPair(mstd::tAutoPtr<mcs::cAbstractPlugIn> pPlugIn)
    : mpExtension(&pPlugIn->coreExtension()), mPlugIn(pPlugIn)
{
}

cExtensionPair::~cExtensionPair() {}

} // namespace mce
