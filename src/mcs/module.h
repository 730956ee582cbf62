/// What a module library exports, and the macro that does it.
#ifndef MORTISE_MCS_MODULE_H
#define MORTISE_MCS_MODULE_H

#include "pi/piTypes.h"
#include "pi/piVersion.h"

#include <type_traits>

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
/// They are found by their plain names: "moduleInitPlugIn", "moduleInitComponent", "moduleVersion" and "kroVersion".
///
/// An exception may leave them. Its class, and all that it refers to, should not be of the module: who loads a library
/// unloads it again when its entry point throws, so that the handler finds neither the code nor the type of the object
/// that it has caught. An exception class of this library is safe, with whatever texts and numbers; so is one of a
/// library that the program itself is linked to. The same goes for what a module throws or hands out later on: nothing
/// of it outlives the library.
/// @{
/// Stores the new plug-in, which becomes the caller's, in `rpResult`.
typedef void tModuleInitPlugIn(cAbstractPlugIn*& rpResult, msa::cReferenceFrame& frame);
/// Stores the new component, which becomes the caller's, in `rpResult`.
typedef void tModuleInitComponent(cAbstractComponent*& rpResult, msa::cReferenceFrame& frame, cModuleMgr& manager);
/// Tells a version. Nobody but its reader knows what the numbers mean.
typedef void tModuleVersion(unsigned int& iMajor, unsigned int& iMinor);
/// @}

// ---------------------------------------------------------------------------------------------------------------------
// What MORTISE_MODULE is made of.

void newModulePlugIn(cAbstractPlugIn*& rpResult, msa::cReferenceFrame& frame);
void newModuleComponent(cAbstractComponent*& rpResult, msa::cReferenceFrame& frame, cModuleMgr& manager);

extern "C" {
MORTISE_API __attribute__((used)) tModuleInitPlugIn moduleInitPlugIn;
MORTISE_API __attribute__((used)) tModuleInitComponent moduleInitComponent;
}

// An entry point that is a friend defined in a template exists if the template is used: a library without a plug-in
// must not export the entry point of one.
template <bool isOffered>
struct tModulePlugInEntry
{
  friend void moduleInitPlugIn(cAbstractPlugIn*& rpResult, msa::cReferenceFrame& frame)
  {
    newModulePlugIn(rpResult, frame);
  }
  static constexpr tModuleInitPlugIn* address() { return &moduleInitPlugIn; }
};

template <>
struct tModulePlugInEntry<false>
{
  static constexpr tModuleInitPlugIn* address() { return nullptr; }
};

template <bool isOffered>
struct tModuleComponentEntry
{
  friend void moduleInitComponent(cAbstractComponent*& rpResult, msa::cReferenceFrame& frame, cModuleMgr& manager)
  {
    newModuleComponent(rpResult, frame, manager);
  }
  static constexpr tModuleInitComponent* address() { return &moduleInitComponent; }
};

template <>
struct tModuleComponentEntry<false>
{
  static constexpr tModuleInitComponent* address() { return nullptr; }
};

// The class among `Classes` that is derived from `Base`.
template <class Base, class... Classes>
struct tModuleClass
{
  template <class... Arguments>
  static void make(Base*&, Arguments&...)
  {
  }
};

template <class Base, class Class, class... Others>
struct tModuleClass<Base, Class, Others...>
{
  template <class... Arguments>
  static void make(Base*& rpResult, Arguments&... arguments)
  {
    if constexpr (std::is_base_of<Base, Class>::value)
    {
      rpResult = new Class(arguments...);
    }
    else
    {
      tModuleClass<Base, Others...>::make(rpResult, arguments...);
    }
  }
};

template <class... Classes>
struct tModuleClasses
{
  static constexpr unsigned int plugIns = (0u + ... + (std::is_base_of<cAbstractPlugIn, Classes>::value ? 1u : 0u));
  static constexpr unsigned int components =
      (0u + ... + (std::is_base_of<cAbstractComponent, Classes>::value ? 1u : 0u));
};

} // namespace mcs

#define MORTISE_MODULE_EXPORT extern "C" __attribute__((visibility("default")))

/// Exports the entry points of a module library: to stand once in it, at file scope.
///
///     MORTISE_MODULE(1, 0, cThermometer)
///
/// The numbers are the version of the module, `Major` and `Minor`. The classes behind them are a component, a plug-in,
/// or one of each; they are complete here, and may be in an unnamed namespace. A component is made from the module
/// manager and the reference frame (cModuleMgr&, msa::cReferenceFrame&), a plug-in from the frame alone. The version of
/// the framework is that of the headers with which the module is compiled.
#define MORTISE_MODULE(Major, Minor, ...)                                                                              \
  MORTISE_MODULE_EXPORT void moduleVersion(unsigned int& iMajor, unsigned int& iMinor)                                 \
  {                                                                                                                    \
    iMajor = Major;                                                                                                    \
    iMinor = Minor;                                                                                                    \
  }                                                                                                                    \
  MORTISE_MODULE_EXPORT void kroVersion(unsigned int& iMajor, unsigned int& iMinor)                                    \
  {                                                                                                                    \
    iMajor = MORTISE_VERSION_MAJOR;                                                                                    \
    iMinor = MORTISE_VERSION_MINOR;                                                                                    \
  }                                                                                                                    \
  void mcs::newModulePlugIn(::mcs::cAbstractPlugIn*& rpResult, ::msa::cReferenceFrame& frame)                          \
  {                                                                                                                    \
    ::mcs::tModuleClass<::mcs::cAbstractPlugIn, __VA_ARGS__>::make(rpResult, frame);                                   \
  }                                                                                                                    \
  void mcs::newModuleComponent(::mcs::cAbstractComponent*& rpResult, ::msa::cReferenceFrame& frame,                    \
                               ::mcs::cModuleMgr& manager)                                                             \
  {                                                                                                                    \
    ::mcs::tModuleClass<::mcs::cAbstractComponent, __VA_ARGS__>::make(rpResult, manager, frame);                       \
  }                                                                                                                    \
  namespace                                                                                                            \
  {                                                                                                                    \
  typedef ::mcs::tModuleClasses<__VA_ARGS__> cMortiseModuleClasses;                                                    \
  static_assert(cMortiseModuleClasses::plugIns <= 1 && cMortiseModuleClasses::components <= 1,                         \
                "a module has one component and one plug-in at most");                                                 \
  static_assert(cMortiseModuleClasses::plugIns + cMortiseModuleClasses::components > 0,                                \
                "the class of a module is derived from mcs::cAbstractComponent or from mcs::cAbstractPlugIn");         \
  __attribute__((used)) ::mcs::tModuleInitPlugIn* const mortiseModulePlugIn =                                          \
      ::mcs::tModulePlugInEntry<cMortiseModuleClasses::plugIns != 0>::address();                                       \
  __attribute__((used)) ::mcs::tModuleInitComponent* const mortiseModuleComponent =                                    \
      ::mcs::tModuleComponentEntry<cMortiseModuleClasses::components != 0>::address();                                 \
  }                                                                                                                    \
  static_assert(true, "for the semicolon")

#endif
