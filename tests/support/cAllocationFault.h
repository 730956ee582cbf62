#ifndef MORTISE_TESTS_SUPPORT_CALLOCATIONFAULT_H
#define MORTISE_TESTS_SUPPORT_CALLOCATIONFAULT_H

namespace support
{

/// Makes one allocation of the calling thread fail: the `iNth` from construction on, counted from 1. With 0 none fails,
/// and the allocations are only counted. With `bAllLater` all later ones fail as well. Ends with its scope; there may
/// be one at a time.
///
/// Counts malloc, calloc, realloc and operator new, in the test program and in the library. A sanitizer has a malloc of
/// its own: under that of g++ only operator new is seen, under that of clang nothing. Tests ask and skip.
class cAllocationFault
{
public:
  explicit cAllocationFault(unsigned int iNth, bool bAllLater = false);
  cAllocationFault(cAllocationFault const&) = delete;
  cAllocationFault& operator=(cAllocationFault const&) = delete;
  ~cAllocationFault();

  /// True if the allocation to fail was reached.
  bool hasFired() const;
  /// Allocations seen so far.
  unsigned int count() const;
  /// Stops counting and failing, so that checks may allocate.
  void disarm();
  /// True if operator new is counted.
  static bool seesNew();
  /// True if malloc and realloc are counted, too.
  static bool seesMalloc();
};

/// Counts the blocks that the calling thread allocates and frees: what is left is a leak, or belongs to somebody who
/// outlives the count. Counts what cAllocationFault sees; where that does not see malloc there is always nothing left,
/// and the sanitizer looks for leaks instead.
class cBlockBalance
{
public:
  cBlockBalance();
  /// Blocks allocated since construction and not freed, less the older ones that were.
  long long blocks() const;

private:
  long long miStart;
};

} // namespace support

#endif
