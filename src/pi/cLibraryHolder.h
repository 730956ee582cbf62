#ifndef MORTISE_PI_CLIBRARYHOLDER_H
#define MORTISE_PI_CLIBRARYHOLDER_H

#include "ucs/cString.h"

namespace mstd
{
template <class T>
class tVector;
}

namespace mucs
{
class cLIMessage;
}

namespace mpi
{

/// Something that keeps a library in memory although nobody has it open any more.
class MORTISE_API cLibraryHolder
{
public:
  enum Reason
  {
    Link = 0,         ///< it is linked so that it stays
    UniqueSymbol = 1, ///< a variable of which the whole process has only one: name() is its symbol
    Thread = 2,       ///< each thread that has used a variable of its own in it, which has a destructor
    Library = 3       ///< another library that needs it: name() is its file
  };

  cLibraryHolder() : mReason(Link) {}
  cLibraryHolder(Reason eReason, mucs::cString const& name) : mReason(eReason), mName(name) {}

  Reason reason() const { return mReason; }
  mucs::cString const& name() const { return mName; }
  /// The same as a sentence.
  mucs::cLIMessage message() const;

  /// Replaces the list by what holds a library, or will hold it: a thread cannot be asked, so a library that could be
  /// held by one always is. True if the process has the library; if that list is empty then, whoever has opened it has
  /// not closed it. `fileName` is the one by which it was loaded. O(all libraries of the process); for people, and for
  /// nobody in a hurry.
  static bool find(mucs::cString const& fileName, mstd::tVector<cLibraryHolder>& holders);

private:
  Reason mReason;
  mucs::cString mName;
};

} // namespace mpi

#endif
