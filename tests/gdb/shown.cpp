// What the printers are shown: one of each, stopped at in show().
#include "std/cAsciiString.h"
#include "std/cTime.h"
#include "std/tArray.h"
#include "std/tAutoPtr.h"
#include "std/tHash.h"
#include "std/tList.h"
#include "std/tPtrList.h"
#include "std/tPtrVector.h"
#include "std/tSharedObject.h"
#include "std/tSharedObjectWatch.h"
#include "std/tVector.h"
#include "ucs/cLIMessage.h"
#include "ucs/cString.h"

struct cPoint
{
  int x;
  int y;
};

__attribute__((noinline)) void show()
{
  __asm__ volatile("");
}

int main()
{
  mstd::cAsciiString bytes("say \"hello\"");
  mstd::cAsciiString noBytes;
  mucs::cString text(L"gr\u00fc\u00df dich");
  mstd::tArray<int> numbers;
  numbers.append(3);
  numbers.append(1);
  mstd::tVector<mstd::cAsciiString> words;
  words.append(mstd::cAsciiString("one"));
  words.append(mstd::cAsciiString("two"));
  mstd::tPtrVector<cPoint> points;
  points.append(new cPoint{5, 6});
  mstd::tList<int> list;
  list.append(10);
  list.append(20).eraseLater();
  mstd::tPtrList<cPoint> pointList(mstd::tPtrList<cPoint>::Object);
  pointList.append(new cPoint{7, 8});
  mstd::tHash<mucs::cString, mucs::cString, mstd::tArrayHashTraits<1024u>> hash;
  hash[mucs::cString("key")] = mucs::cString("value");
  mstd::tAutoPtr<cPoint> owner(new cPoint{1, 2});
  mstd::tAutoPtr<cPoint> nobody;
  mstd::tSharedObject<cPoint> shared(new cPoint{3, 4});
  mstd::tSharedObject<cPoint> second(shared);
  mstd::tSharedObjectWatch<cPoint> watch(shared);
  mstd::tSharedObject<cPoint> gone(new cPoint{3, 4});
  mstd::tSharedObjectWatch<cPoint> widow(gone);
  gone.reset();
  mstd::cTime time(1234567890000001ull);
  mucs::cLIMessage message;
  message << "$MTR$Cannot open %file%!"
          << "door";
  mucs::cLIMessage noMessage;
  show();
  return 0;
}
