#ifndef MORTISE_TESTS_SUPPORT_CCOUNTINGELEMENT_H
#define MORTISE_TESTS_SUPPORT_CCOUNTINGELEMENT_H

#include <set>
#include <vector>

namespace support
{

/// What a cCountingElement throws in place of being copied.
class cCopyFailed
{
};

/// Element for container tests: has a value, counts its lives, knows by its address who it is (so that an element that
/// is moved as memory, used after its end or destroyed twice is noticed), and throws at the n-th copy if told so.
class cCountingElement
{
public:
  cCountingElement() : cCountingElement(0) {}
  cCountingElement(int iValue) : miValue(iValue) { enter(); }
  cCountingElement(cCountingElement const& other) : miValue(other.value())
  {
    if (counters().copiesLeft > 0 && --counters().copiesLeft == 0)
    {
      throw cCopyFailed();
    }
    ++counters().copies;
    enter();
  }
  ~cCountingElement()
  {
    if (counters().alive.erase(this) != 1)
    {
      ++counters().errors;
    }
    counters().destroyed.push_back(miValue);
  }
  cCountingElement& operator=(cCountingElement const& other)
  {
    check();
    miValue = other.value();
    return *this;
  }

  int value() const
  {
    check();
    return miValue;
  }
  void setValue(int iValue)
  {
    check();
    miValue = iValue;
  }
  bool operator==(cCountingElement const& other) const { return value() == other.value(); }

  /// Number of elements alive now.
  static unsigned int alive() { return static_cast<unsigned int>(counters().alive.size()); }
  /// Number of copies made since reset().
  static unsigned int copies() { return counters().copies; }
  /// Number of uses of something that is no living element, since reset().
  static unsigned int errors() { return counters().errors; }
  /// Values of the destroyed elements in the order of their end, since reset().
  static std::vector<int> const& destroyed() { return counters().destroyed; }

  /// The `n`-th copy from now on throws cCopyFailed, once; 0 for none.
  static void throwAtCopy(unsigned int n) { counters().copiesLeft = n; }

  /// Starts counting anew. Elements that are alive stay known.
  static void reset()
  {
    counters().copies = 0;
    counters().copiesLeft = 0;
    counters().errors = 0;
    counters().destroyed.clear();
  }

private:
  struct cCounters
  {
    std::set<cCountingElement const*> alive;
    std::vector<int> destroyed;
    unsigned int copies = 0;
    unsigned int copiesLeft = 0;
    unsigned int errors = 0;
  };
  static cCounters& counters()
  {
    static cCounters theCounters;
    return theCounters;
  }

  void enter()
  {
    if (!counters().alive.insert(this).second)
    {
      ++counters().errors;
    }
  }
  void check() const
  {
    if (counters().alive.count(this) != 1)
    {
      ++counters().errors;
    }
  }

  int miValue;
};

} // namespace support

#endif
