#ifndef MORTISE_RMI_TPUBLISHEDSLOT_H
#define MORTISE_RMI_TPUBLISHEDSLOT_H

#include "pi/piTypes.h"
#include "rmi/cAbstractSlotCall0.h"
#include "rmi/cAbstractSlotCall1.h"
#include "rmi/cAbstractSlotCall2.h"
#include "rmi/cAbstractSlotCall3.h"
#include "rmi/cRMIExceptions.h"
#include "sa/cAbstractDeserializer.h"
#include "sa/cAbstractSerializer.h"
#include "sa/cReferenceFrame.h"
#include "sa/tTypeName.h"
#include "std/cAbstractException.h"
#include "std/cAsciiString.h"
#include "std/tAutoPtr.h"

#include <type_traits>
#include <utility>

namespace mrmi
{
class cConnectable;
class cPublicSlot;

/// What publishing a slot needs that does not depend on its types. Use publishSlot().
class MORTISE_API cSlotPublisher
{
public:
  /// A type in the description: its name, and whether the slot writes to it.
  struct cType
  {
    char const* mpName;
    bool mAlterable;
  };

  /// Publishes `call` on `object`. The names of the parameters stand one behind the other with commas between them.
  static cPublicSlot& publish(cConnectable& object, mstd::cAsciiString const& name, cType const& result,
                              cType const* pParameters, unsigned int parameters,
                              mstd::cAsciiString const& parameterNames, mstd::cAsciiString const& description,
                              mstd::tAutoPtr<cAbstractSlotCall> call);
  /// Raises mstd::cOutOfBoundsException if the frame has a reference behind the reading position.
  static void checkEnd(msa::cReferenceFrame const& frame);
};

/// The slot call that a member function with these arguments has.
template <typename... A>
struct tSlotCallOf;
template <>
struct tSlotCallOf<>
{
  typedef cAbstractSlotCall0<piVoid> cType;
};
template <typename A1>
struct tSlotCallOf<A1>
{
  typedef cAbstractSlotCall1<piVoid, A1> cType;
};
template <typename A1, typename A2>
struct tSlotCallOf<A1, A2>
{
  typedef cAbstractSlotCall2<piVoid, A1, A2> cType;
};
template <typename A1, typename A2, typename A3>
struct tSlotCallOf<A1, A2, A3>
{
  typedef cAbstractSlotCall3<piVoid, A1, A2, A3> cType;
};

/// Slot call of an ordinary member function `M` of `T` with the result `R` and the arguments `A`, which answers
/// signals, frames and streams. publishSlot() makes it; on the stack it serves as a template for connect(), too.
///
/// A parameter `T&` is alterable, in a frame and in the description: it has a value on entry, and its value goes back.
/// All others are only read. A frame has to end in a variable of the type of the result, without reference and const,
/// or in a piVoid for a slot without one. To a signal the slot has no result: it is dropped.
///
/// The arguments are values with stream operators, which can be made without arguments. `T` derives from cConnectable
/// and must outlive this call.
///
/// Errors: arguments that can't be read raise cCallParameterMissmatchException, before the slot is called. What the
///         slot raises goes through.
template <typename T, typename M, typename R, typename... A>
class MORTISE_API tPublishedSlot : public tSlotCallOf<A...>::cType
{
  typedef typename tSlotCallOf<A...>::cType cBase;
  typedef std::index_sequence_for<A...> cIndexes;
  typedef std::integral_constant<bool, std::is_void<R>::value> tIsVoid;

public:
  /// Type of the variable that takes the result.
  typedef std::conditional_t<std::is_void<R>::value, piVoid, std::decay_t<R>> cResult;
  /// Type of the variable that holds an argument.
  template <typename Argument>
  using tValue = std::remove_cv_t<std::remove_reference_t<Argument>>;
  /// Whether the slot writes to the argument.
  template <typename Argument>
  using tIsAlterable = std::integral_constant<bool, std::is_lvalue_reference<Argument>::value &&
                                                        !std::is_const<std::remove_reference_t<Argument>>::value>;

  tPublishedSlot(T& object, M method) : tPublishedSlot(object, method, 0) {}

  using cBase::call;
  void call(A... arguments) const override { (mObject.*mMethod)(std::forward<A>(arguments)...); }
  /// Checks that the frame ends in a variable for the result, behind as many references as there are arguments, and
  /// calls callRef(). A frame that does not raises mstd::cBugException if there are arguments, and else goes through as
  /// the frame's own failure, as with all slot calls.
  void call(msa::cReferenceFrame& frame) const override
  {
    try
    {
      frame.restartReading();
      for (unsigned int i = 0; i < sizeof...(A); ++i)
      {
        frame.skipNext();
      }
      frame.readNext<cResult>();
      cSlotPublisher::checkEnd(frame);
    }
    catch (mstd::cAbstractException const& e)
    {
      if (sizeof...(A) == 0)
      {
        throw;
      }
      cRMIExceptions::throwMissingReturnValue(e);
    }
    frame.restartReading();
    callRef(frame);
  }
  /// Calls with the variables of the frame, and puts the result into the last one.
  void callRef(msa::cReferenceFrame& frame) const override
  {
    tVariables<cIndexes> variables;
    cResult* pResult = 0;
    try
    {
      variables.read(frame);
      pResult = &frame.readNext<cResult>();
    }
    catch (mstd::cAbstractException const& e)
    {
      cRMIExceptions::throwParameterMissmatch(this->publicSlot(), e);
    }
    run(variables, *pResult, tIsVoid());
  }
  /// Reads the arguments in order, calls, and writes the alterable ones in order and the result last. That is what
  /// msa::cReferenceFrame::load() with the alterable references of the caller's frame reads.
  void call(msa::cAbstractDeserializer& arguments, msa::cAbstractSerializer& results) const override
  {
    tValues<cIndexes> values;
    try
    {
      values.read(arguments);
    }
    catch (mstd::cAbstractException const& e)
    {
      cRMIExceptions::throwParameterMissmatch(this->publicSlot(), e);
    }
    cResult result = cResult();
    run(values, result, tIsVoid());
    values.writeAlterable(results);
    result >> results;
  }
  cBase* createConnectedInstance(cAbstractSignal& signal) const override
  {
    return new tPublishedSlot(mObject, mMethod, &signal);
  }

private:
  tPublishedSlot(T& object, M method, cAbstractSignal* pSignal)
      : cBase(object, pSignal), mObject(object), mMethod(method)
  {
  }

  // One argument; the index tells arguments of the same type from each other.
  template <unsigned int Index, typename Argument>
  struct tValueOf
  {
    tValue<Argument> mValue{};
  };
  template <unsigned int Index, typename Argument>
  struct tVariableOf
  {
    tValue<Argument>* mpValue = nullptr;
  };

  // The arguments of a call through streams.
  template <typename Indexes>
  struct tValues;
  template <std::size_t... Index>
  struct tValues<std::index_sequence<Index...>> : private tValueOf<Index, A>...
  {
    void read([[maybe_unused]] msa::cAbstractDeserializer& deserializer)
    {
      (static_cast<void>(tValueOf<Index, A>::mValue << deserializer), ...);
    }
    void writeAlterable([[maybe_unused]] msa::cAbstractSerializer& serializer) const
    {
      (write(serializer, tValueOf<Index, A>::mValue, tIsAlterable<A>()), ...);
    }
    R callOn(T& object, M method) { return (object.*method)(static_cast<A>(tValueOf<Index, A>::mValue)...); }

  private:
    template <typename Value>
    static void write(msa::cAbstractSerializer& serializer, Value const& value, std::true_type)
    {
      value >> serializer;
    }
    template <typename Value>
    static void write(msa::cAbstractSerializer&, Value const&, std::false_type)
    {
    }
  };

  // The caller's variables in a frame.
  template <typename Indexes>
  struct tVariables;
  template <std::size_t... Index>
  struct tVariables<std::index_sequence<Index...>> : private tVariableOf<Index, A>...
  {
    void read([[maybe_unused]] msa::cReferenceFrame& frame)
    {
      (static_cast<void>(tVariableOf<Index, A>::mpValue = &frame.readNext<tValue<A>>()), ...);
    }
    R callOn(T& object, M method) { return (object.*method)(static_cast<A>(*tVariableOf<Index, A>::mpValue)...); }
  };

  template <typename Arguments>
  void run(Arguments& arguments, cResult&, std::true_type) const
  {
    arguments.callOn(mObject, mMethod);
  }
  template <typename Arguments>
  void run(Arguments& arguments, cResult& result, std::false_type) const
  {
    result = arguments.callOn(mObject, mMethod);
  }

  T& mObject;
  M mMethod;
};

namespace published
{
template <typename R, typename... A, typename T, typename M>
cPublicSlot& publish(T& object, mstd::cAsciiString const& name, M method, mstd::cAsciiString const& parameterNames,
                     mstd::cAsciiString const& description)
{
  static_assert(sizeof...(A) <= 3, "a slot has at most three arguments");
  static_assert(!std::disjunction<std::is_rvalue_reference<A>..., std::is_pointer<A>...>::value,
                "an argument is a value, or a reference to one");
  typedef tPublishedSlot<T, M, R, A...> cCall;
  // The last entry is the result, and keeps the array from being empty.
  cSlotPublisher::cType const types[] = {
      {msa::tTypeName<typename cCall::template tValue<A>>::name(), cCall::template tIsAlterable<A>::value}...,
      {msa::tTypeName<typename cCall::cResult>::name(), !std::is_void<R>::value}};
  mstd::tAutoPtr<cAbstractSlotCall> call(new cCall(object, method));
  return cSlotPublisher::publish(object, name, types[sizeof...(A)], types, sizeof...(A), parameterNames, description,
                                 call);
}
} // namespace published

/// Publishes a member function of `object`, with no to three arguments and any result, as a slot:
///
///     mrmi::publishSlot(*this, "scale", &cFoo::scale, "factor, value", "multiplies the value");
///
/// The types in the description are those of msa::tTypeName. `parameterNames` is empty, or names all parameters, in
/// order, with commas between them; each becomes the description of its parameter. Another number of names is an
/// assertion failure. See tPublishedSlot for how the slot is called. A failure publishes nothing.
template <typename T, typename C, typename R, typename... A>
cPublicSlot& publishSlot(T& object, mstd::cAsciiString const& name, R (C::*method)(A...),
                         mstd::cAsciiString const& parameterNames = mstd::cAsciiString(),
                         mstd::cAsciiString const& description = mstd::cAsciiString())
{
  return published::publish<R, A...>(object, name, method, parameterNames, description);
}
template <typename T, typename C, typename R, typename... A>
cPublicSlot& publishSlot(T& object, mstd::cAsciiString const& name, R (C::*method)(A...) const,
                         mstd::cAsciiString const& parameterNames = mstd::cAsciiString(),
                         mstd::cAsciiString const& description = mstd::cAsciiString())
{
  return published::publish<R, A...>(object, name, method, parameterNames, description);
}
} // namespace mrmi

#endif
