// A program from outside the project: text, a signal, a turn of the loop and a caught failure.
#include "pi/cSystem.h"
#include "pi/cWork.h"
#include "pi/schedule.h"
#include "rmi/cConnectable.h"
#include "rmi/cDirectLocalSlotCall0.h"
#include "std/cAsciiString.h"
#include "std/cOutOfRangeException.h"
#include "std/tVector.h"
#include "ucs/cString.h"

#include <cstdio>

class cCounter : public mrmi::cConnectable
{
public:
  void sltCount() { miCount++; }
  int miCount = 0;
};

int main()
{
  mpi::system();
  cCounter counter;
  mpi::schedule(mrmi::cDirectLocalSlotCall0(counter, &cCounter::sltCount), 0, "count");
  while (mpi::cSystem::exec() != 0)
  {
  }
  bool bCaught = false;
  mstd::tVector<mstd::cAsciiString> words;
  words.append(mstd::cAsciiString("one"));
  try
  {
    words.at(1);
  }
  catch (mstd::cOutOfRangeException const&)
  {
    bCaught = true;
  }
  mucs::cString const text(L"gr\u00fc\u00df dich");
  std::printf("count %d, caught %d, %u code points\n", counter.miCount, bCaught, text.length());
  return counter.miCount == 1 && bCaught && text.length() == 9 ? 0 : 1;
}
