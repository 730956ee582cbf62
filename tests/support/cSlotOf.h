#ifndef MORTISE_TESTS_SUPPORT_CSLOTOF_H
#define MORTISE_TESTS_SUPPORT_CSLOTOF_H

#include "pi/cWork.h"
#include "rmi/cConnectable.h"
#include "rmi/cDirectLocalSlotCall0.h"
#include "rmi/cDirectLocalSlotCall1.h"
#include "rmi/cDirectLocalSlotCall2.h"

#include <functional>
#include <utility>

namespace support
{

/// Slot without arguments whose body is given by the test.
class cSlot : public mrmi::cConnectable
{
public:
  cSlot() = default;
  explicit cSlot(std::function<void()> body) : mBody(std::move(body)) {}

  void slt()
  {
    ++miCalls;
    if (mBody)
    {
      mBody();
    }
  }
  auto call() { return mrmi::cDirectLocalSlotCall0(*this, &cSlot::slt); }
  unsigned int calls() const { return miCalls; }

  std::function<void()> mBody;

private:
  unsigned int miCalls = 0;
};

/// Slot for the change signal of a work.
class cChangedSlot : public mrmi::cConnectable
{
public:
  explicit cChangedSlot(std::function<void(mpi::cWork*)> body = {}) : mBody(std::move(body)) {}

  void slt(mpi::cWork* pWork)
  {
    ++miCalls;
    mpLast = pWork;
    if (mBody)
    {
      mBody(pWork);
    }
  }
  auto call() { return mrmi::cDirectLocalSlotCall1(*this, &cChangedSlot::slt); }
  unsigned int calls() const { return miCalls; }
  mpi::cWork* last() const { return mpLast; }

  std::function<void(mpi::cWork*)> mBody;

private:
  unsigned int miCalls = 0;
  mpi::cWork* mpLast = nullptr;
};

/// Slot for the destroyed signal of a work.
class cDestroyedSlot : public mrmi::cConnectable
{
public:
  explicit cDestroyedSlot(std::function<void(mpi::cWork const&)> body = {}) : mBody(std::move(body)) {}

  void slt(mpi::cWork const& work)
  {
    ++miCalls;
    if (mBody)
    {
      mBody(work);
    }
  }
  auto call() { return mrmi::cDirectLocalSlotCall1(*this, &cDestroyedSlot::slt); }
  unsigned int calls() const { return miCalls; }

  std::function<void(mpi::cWork const&)> mBody;

private:
  unsigned int miCalls = 0;
};

/// Slot for the error signal of a work.
class cErrorSlot : public mrmi::cConnectable
{
public:
  typedef std::function<void(mstd::cAbstractException const&, bool)> tBody;

  explicit cErrorSlot(tBody body = {}) : mBody(std::move(body)) {}

  void slt(mstd::cAbstractException const& e, bool bFromChild)
  {
    ++miCalls;
    mFromChild = bFromChild;
    if (mBody)
    {
      mBody(e, bFromChild);
    }
  }
  auto call() { return mrmi::cDirectLocalSlotCall2(*this, &cErrorSlot::slt); }
  unsigned int calls() const { return miCalls; }
  bool fromChild() const { return mFromChild; }

  tBody mBody;

private:
  unsigned int miCalls = 0;
  bool mFromChild = false;
};

} // namespace support

#endif
