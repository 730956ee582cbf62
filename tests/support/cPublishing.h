#ifndef MORTISE_TESTS_SUPPORT_CPUBLISHING_H
#define MORTISE_TESTS_SUPPORT_CPUBLISHING_H

#include "rmi/cAbstractSlotCall0.h"
#include "rmi/cAbstractSlotCall1.h"
#include "rmi/cAbstractSlotCall2.h"
#include "rmi/cAbstractSlotCall3.h"
#include "rmi/cConnectable.h"
#include "rmi/cRMIExceptions.h"
#include "sa/cAbstractDeserializer.h"
#include "sa/cAbstractSerializer.h"
#include "sa/cReferenceFrame.h"
#include "std/cAbstractException.h"

#include <functional>
#include <utility>

namespace support
{

/// Slot call of an application, without arguments, which answers frames and streams. The body is given by the test.
class cPokeCall : public mrmi::cAbstractSlotCall0<piVoid>
{
public:
  typedef std::function<void()> tBody;

  cPokeCall(mrmi::cConnectable& object, tBody body, mrmi::cAbstractSignal* pSignal = nullptr)
      : mrmi::cAbstractSlotCall0<piVoid>(object, pSignal), mBody(std::move(body))
  {
  }

  using mrmi::cAbstractSlotCall0<piVoid>::call;
  void call() const override { mBody(); }
  void callRef(msa::cReferenceFrame&) const override { mBody(); }
  void call(msa::cAbstractDeserializer&, msa::cAbstractSerializer&) const override { mBody(); }
  mrmi::cAbstractSlotCall0<piVoid>* createConnectedInstance(mrmi::cAbstractSignal& signal) const override
  {
    return new cPokeCall(assignedObject(), mBody, &signal);
  }

private:
  tBody mBody;
};

/// With one argument, which it reads.
class cTellCall : public mrmi::cAbstractSlotCall1<piVoid, int>
{
public:
  typedef std::function<void(int)> tBody;

  cTellCall(mrmi::cConnectable& object, tBody body, mrmi::cAbstractSignal* pSignal = nullptr)
      : mrmi::cAbstractSlotCall1<piVoid, int>(object, pSignal), mBody(std::move(body))
  {
  }

  using mrmi::cAbstractSlotCall1<piVoid, int>::call;
  void call(int iValue) const override { mBody(iValue); }
  void callRef(msa::cReferenceFrame& frame) const override { call(frame.readNext<int>()); }
  mrmi::cAbstractSlotCall1<piVoid, int>* createConnectedInstance(mrmi::cAbstractSignal& signal) const override
  {
    return new cTellCall(assignedObject(), mBody, &signal);
  }

private:
  tBody mBody;
};

/// With an argument that it reads and one that it alters. Tells what it can't read.
class cScaleCall : public mrmi::cAbstractSlotCall2<piVoid, int, int&>
{
public:
  typedef std::function<void(int, int&)> tBody;

  cScaleCall(mrmi::cConnectable& object, tBody body, mrmi::cAbstractSignal* pSignal = nullptr)
      : mrmi::cAbstractSlotCall2<piVoid, int, int&>(object, pSignal), mBody(std::move(body))
  {
  }

  using mrmi::cAbstractSlotCall2<piVoid, int, int&>::call;
  void call(int iFactor, int& iValue) const override { mBody(iFactor, iValue); }
  void callRef(msa::cReferenceFrame& frame) const override
  {
    int* pFactor = nullptr;
    int* pValue = nullptr;
    try
    {
      pFactor = &frame.readNext<int>();
      pValue = &frame.readNext<int>();
    }
    catch (mstd::cAbstractException const& e)
    {
      mrmi::cRMIExceptions::throwParameterMissmatch(publicSlot(), e);
    }
    call(*pFactor, *pValue);
  }
  void call(msa::cAbstractDeserializer& arguments, msa::cAbstractSerializer& results) const override
  {
    int iFactor = 0;
    int iValue = 0;
    iFactor << arguments;
    iValue << arguments;
    call(iFactor, iValue);
    iValue >> results;
  }
  mrmi::cAbstractSlotCall2<piVoid, int, int&>* createConnectedInstance(mrmi::cAbstractSignal& signal) const override
  {
    return new cScaleCall(assignedObject(), mBody, &signal);
  }

private:
  tBody mBody;
};

/// With three arguments.
class cJoinCall : public mrmi::cAbstractSlotCall3<piVoid, int, bool, double&>
{
public:
  explicit cJoinCall(mrmi::cConnectable& object, mrmi::cAbstractSignal* pSignal = nullptr)
      : mrmi::cAbstractSlotCall3<piVoid, int, bool, double&>(object, pSignal)
  {
  }

  using mrmi::cAbstractSlotCall3<piVoid, int, bool, double&>::call;
  void call(int iFirst, bool bSecond, double& dThird) const override { dThird = bSecond ? iFirst : -iFirst; }
  void callRef(msa::cReferenceFrame& frame) const override
  {
    int const iFirst = frame.readNext<int>();
    bool const bSecond = frame.readNext<bool>();
    call(iFirst, bSecond, frame.readNext<double>());
  }
  mrmi::cAbstractSlotCall3<piVoid, int, bool, double&>*
  createConnectedInstance(mrmi::cAbstractSignal& signal) const override
  {
    return new cJoinCall(assignedObject(), &signal);
  }
};

} // namespace support

#endif
