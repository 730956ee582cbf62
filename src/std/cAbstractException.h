#ifndef MORTISE_STD_CABSTRACTEXCEPTION_H
#define MORTISE_STD_CABSTRACTEXCEPTION_H

#include "pi/piTypes.h"
#include "std/cAsciiString.h"
#include "std/exceptionShape.h"
#include "std/tAutoPtr.h"

#include <new>

namespace mcs
{
class cComponentLocation;
}

namespace msa
{
class cAbstractDeserializer;
class cAbstractSerializer;
} // namespace msa

namespace mucs
{
class cLILocale;
class cLIMessage;
class cString;
} // namespace mucs

namespace mstd
{
class cAbstractExceptionFactory;

/// Root of all exceptions: a type, a text, the place and the call stack that raised it, and the chain of
/// earlier causes (its history).
///
/// Two families stand below it: cBugException for programming errors, cRuntimeException for conditions that a
/// correct program must expect. Exceptions are raised through throw functions (cSTDExceptions and its like) and
/// thrown by value. The texts live inside the object, since an exception may be raised when the heap is exhausted.
///
/// Whoever raises any exception with the environment variable "ME" set to "dump" gets a stack trace on the debug
/// output first; with "break", a breakpoint.
///
/// Ownership: owns its history and its remote location.
/// Errors:    copying never fails. A copy that finds no memory for its history, or for one of its texts, does
///            without them and has outOfMemoryCondition() set.
/// Threads:   a value that belongs to one thread at a time.
/// Cost:      construction takes the call stack (64 levels). Chains are walked, copied and destroyed in a loop, so
///            their length is bounded by memory only.
class MORTISE_API cAbstractException
{
public:
  /// Who is at fault; the numbers are part of the record on a stream.
  enum Type
  {
    Bug = 0,    ///< cBugException and below
    Runtime = 1 ///< cRuntimeException and below
  };

  enum
  {
    MaxFileNameLength = 60, ///< characters kept of a source file name
    MaxWhatLength = 255,    ///< characters kept of a what text
    MaxBackTrace = 64       ///< entries of a back trace
  };

  /// What createMessage() puts into a text.
  enum MessageFlags
  {
    NewestOnly = 0,
    WithHistory = 1, ///< the older exceptions, too
    Indent = 4       ///< each older exception is preceded by one blank more
  };

  virtual ~cAbstractException();
  /// A new heap copy of the most-derived object with its history; the caller owns it. Raises std::bad_alloc.
  virtual cAbstractException* createObject() const = 0;
  /// Class name without namespace. It is the key of has() and of the record on a stream.
  virtual cAsciiString typeName() const = 0;
  /// The message for people, or null. Lives as long as the exception.
  virtual mucs::cLIMessage const* liMessage() const;
  /// Hook for applications that attach a dialog of their own; null here. Nobody in the library reads it.
  virtual void* dialog() const;
  /// True if the exception came over a connection.
  virtual bool isRemote() const;
  /// Where it was raised. On a local exception this is an assertion failure: ask isRemote() first.
  virtual mcs::cComponentLocation const& remoteLocation() const;
  /// Writes one line for each exception of the chain, newest first, to the debug output.
  virtual void dump() const;
  /// Writes what of this exception travels: class name, type, out-of-memory mark, and in the concrete classes the
  /// message. The what text, the place, the back trace, the remote location and the fields of derived classes stay
  /// behind.
  virtual void store(msa::cAbstractSerializer& serializer) const;
  /// Reads what store() wrote, but for the class name, by which somebody has chosen this object. Leaves no place and no
  /// back trace: those of the reader mean nothing. What can't be read leaves the exception as it was.
  virtual void load(msa::cAbstractDeserializer& deserializer);
  /// True if this object lost something for lack of memory when it was copied.
  virtual bool outOfMemoryCondition() const;

  /// Short text given at construction, cut to MaxWhatLength; never null.
  char const* what() const { return mWhat; }
  Type type() const { return mType; }
  /// Next older exception of the chain, or null. Stays owned by this one.
  cAbstractException const* history() const { return mpHistory; }
  /// A clone of the history, owned by the caller, or null if there is none. If memory runs out the clone ends at the
  /// last exception that could be copied: `outOfMemory` is set if that leaves nothing, else the mark of that
  /// exception. Never throws. O(length of the chain).
  cAbstractException* getHistory(bool& outOfMemory) const;
  /// First exception from this one on towards the oldest whose typeName() is `name`, or null.
  cAbstractException const* has(cAsciiString const& name) const;
  /// Exchanges everything but the remote locations, which stay with their objects.
  void swap(cAbstractException& other) noexcept;
  /// Takes over everything but the remote location. Assigning an exception to itself, or one of its own history, is
  /// harmless.
  cAbstractException& operator=(cAbstractException const& other);
  /// File that raised the exception, cut to MaxFileNameLength; empty if none was given.
  char const* sourceFileName() const { return mSourceFile; }
  unsigned int sourceFileLine() const { return miSourceLine; }
  /// True if any exception of the chain has the out-of-memory mark.
  bool hasOutOfMemoryCondition() const;
  /// The message to show: that of this exception, "Out of memory!" if the chain has the mark, else the what text.
  mucs::cLIMessage toMessage() const;
  /// Marks the exception as remote; a copy of the location replaces any earlier one. Raises std::bad_alloc and changes
  /// nothing then.
  void setRemoteInfo(mcs::cComponentLocation const& location);
  /// Hangs `older`, which becomes owned, to the end of the chain. Null changes nothing.
  void link(cAbstractException* older);
  /// Hangs a clone of `older` to the end of the chain. Raises std::bad_alloc and changes nothing then.
  void link(cAbstractException const& older);
  /// Call stack at construction: MaxBackTrace addresses, innermost first, zero behind the last. Null if none was found.
  piAddress const* backtrace() const { return mBackTrace[0] != 0 ? mBackTrace : 0; }

  /// Writes the chain, newest first.
  void storeRecursive(msa::cAbstractSerializer& serializer) const;
  /// Rebuilds a chain that storeRecursive() wrote. A class that `factory` does not know becomes a cRuntimeException
  /// that names it, and what follows is left unread.
  static tAutoPtr<cAbstractException> createFromStream(msa::cAbstractDeserializer& deserializer,
                                                       cAbstractExceptionFactory const& factory);

  /// Appends the text of `e` alone to `out`: its message, or its what text if it has none. `flags` has no effect.
  /// The message is read in the language of `locale`, or in English without one.
  static void createMessage(cAbstractException const& e, mucs::cString& out, unsigned int flags = NewestOnly,
                            mucs::cLILocale const* locale = 0);
  /// Replaces `out` by the text of this exception and, as the MessageFlags say, of its history, newest first with
  /// `separator` between them.
  void createMessage(mucs::cString& out, mucs::cString const& separator, unsigned int flags = WithHistory,
                     mucs::cLILocale const* locale = 0) const;

protected:
  /// Both texts may be null, and are then empty.
  cAbstractException(char const* what, Type type, char const* file, unsigned int line);
  cAbstractException(cAbstractException const& other);

  /// What load() reads here, for classes that read more and change nothing before they have it all.
  struct cMarks
  {
    Type mType;
    bool mOutOfMemory;
  };
  static cMarks loadMarks(msa::cAbstractDeserializer& deserializer);
  /// Takes the marks over, and drops place and back trace.
  void setMarks(cMarks const& marks) noexcept;

  /// Copies a field of a copied exception. If there is no memory for it the field stays as it is, and the copy gets
  /// the out-of-memory mark.
  template <typename Field>
  void copyField(Field& field, Field const& source)
  {
    try
    {
      field = source;
    }
    catch (std::bad_alloc const&)
    {
      mOutOfMemory = true;
    }
  }

private:
  void destroyHistory();
  bool isInChain(cAbstractException const& other) const;

  char mSourceFile[MaxFileNameLength + 1];
  unsigned int miSourceLine;
  char mWhat[MaxWhatLength + 1];
  Type mType;
  cAbstractException* mpHistory;
  bool mOutOfMemory;
  mcs::cComponentLocation* mpRemoteLocation; // owned; null until setRemoteInfo()
  piAddress mBackTrace[MaxBackTrace];
  mutable bool mIsCopiedAlone; // the next copy goes without its history, see getHistory()
};
} // namespace mstd

#endif
