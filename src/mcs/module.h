/// What a module library exports, and the macro that does it.
#ifndef MORTISE_MCS_MODULE_H
#define MORTISE_MCS_MODULE_H

namespace msa
{
class cReferenceFrame;
}

namespace mcs
{
class cAbstractComponent;
class cAbstractPlugIn;
class cModuleMgr;

/// \name Entry points of a module library
/// They are found by their plain names: "moduleInitPlugIn", "moduleInitComponent", "moduleVersion" and "kroVersion". An
/// exception may leave them; its class must not be one of the library, whose code goes when nothing has come out of it.
/// @{
/// Stores the new plug-in, which becomes the caller's, in `rpResult`.
typedef void tModuleInitPlugIn(cAbstractPlugIn*& rpResult, msa::cReferenceFrame& frame);
/// Stores the new component, which becomes the caller's, in `rpResult`.
typedef void tModuleInitComponent(cAbstractComponent*& rpResult, msa::cReferenceFrame& frame, cModuleMgr& manager);
/// Tells a version. Nobody but its reader knows what the numbers mean.
typedef void tModuleVersion(unsigned int& iMajor, unsigned int& iMinor);
/// @}
} // namespace mcs

#define MORTISE_MODULE_EXPORT extern "C" __attribute__((visibility("default")))

/// Exports the version of a module, and that of the framework for which it was written: to stand once in a module
/// library, at file scope, beside MORTISE_MODULE_COMPONENT, MORTISE_MODULE_PLUGIN or both.
#define MORTISE_MODULE_VERSION(Major, Minor, FrameworkMajor, FrameworkMinor)                                           \
  MORTISE_MODULE_EXPORT void moduleVersion(unsigned int& iMajor, unsigned int& iMinor)                                 \
  {                                                                                                                    \
    iMajor = Major;                                                                                                    \
    iMinor = Minor;                                                                                                    \
  }                                                                                                                    \
  MORTISE_MODULE_EXPORT void kroVersion(unsigned int& iMajor, unsigned int& iMinor)                                    \
  {                                                                                                                    \
    iMajor = FrameworkMajor;                                                                                           \
    iMinor = FrameworkMinor;                                                                                           \
  }

/// Exports the component of a module: `Class` is made from the manager and the frame.
#define MORTISE_MODULE_COMPONENT(Class)                                                                                \
  MORTISE_MODULE_EXPORT void moduleInitComponent(::mcs::cAbstractComponent*& rpResult, ::msa::cReferenceFrame& frame,  \
                                                 ::mcs::cModuleMgr& manager)                                           \
  {                                                                                                                    \
    rpResult = new Class(manager, frame);                                                                              \
  }

/// Exports the plug-in of a module: `Class` is made from the frame.
#define MORTISE_MODULE_PLUGIN(Class)                                                                                   \
  MORTISE_MODULE_EXPORT void moduleInitPlugIn(::mcs::cAbstractPlugIn*& rpResult, ::msa::cReferenceFrame& frame)        \
  {                                                                                                                    \
    rpResult = new Class(frame);                                                                                       \
  }

#endif
