#ifndef MORTISE_STD_CLIFE_H
#define MORTISE_STD_CLIFE_H

#include "pi/piTypes.h"

namespace mstd
{
class cLifeWatch;

/// Member of an object that calls slots and virtual operations of others, which may destroy it: tells the watches on
/// the stack that its object is gone.
class MORTISE_API cLife
{
public:
  cLife() noexcept : mpWatch(nullptr) {}
  cLife(cLife const&) = delete; // each object has one of its own
  cLife& operator=(cLife const&) = delete;
  ~cLife();

private:
  friend class cLifeWatch;

  cLifeWatch* mpWatch; // the innermost one
};

#if defined(__GNUC__) && !defined(__clang__) && __GNUC__ >= 12
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdangling-pointer" // the destructor takes the pointer back
#endif
/// Looks after the life of an object for the time of a scope. Watches of one object end in the reverse order of their
/// beginning, as scopes do.
class MORTISE_API cLifeWatch
{
public:
  explicit cLifeWatch(cLife& life) noexcept : mpLife(&life), mpOuter(life.mpWatch) { life.mpWatch = this; }
  cLifeWatch(cLifeWatch const&) = delete;
  cLifeWatch& operator=(cLifeWatch const&) = delete;
  ~cLifeWatch()
  {
    if (mpLife != nullptr)
    {
      mpLife->mpWatch = mpOuter;
    }
  }

  /// True if the object is gone, and must not be touched any more.
  bool isOver() const { return mpLife == nullptr; }

private:
  friend class cLife;

  cLife* mpLife;
  cLifeWatch* mpOuter;
};
#if defined(__GNUC__) && !defined(__clang__) && __GNUC__ >= 12
#pragma GCC diagnostic pop
#endif

inline cLife::~cLife()
{
  for (cLifeWatch* watch = mpWatch; watch != nullptr; watch = watch->mpOuter)
  {
    watch->mpLife = nullptr;
  }
}

} // namespace mstd

#endif
