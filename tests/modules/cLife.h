#ifndef MORTISE_TESTS_MODULES_CLIFE_H
#define MORTISE_TESTS_MODULES_CLIFE_H

#include "sa/cReferenceFrame.h"
#include "std/cAsciiString.h"

/// Writes down the life of an object that a module makes: into the text that the test has put into the frame, if it
/// has.
class cLife
{
public:
  cLife(msa::cReferenceFrame& frame, char const* pName)
      : mpNotes(frame.canRead() ? &frame.readNext<mstd::cAsciiString>() : nullptr), mpName(pName)
  {
    note(" made;");
  }
  cLife(cLife const&) = delete;
  cLife& operator=(cLife const&) = delete;
  ~cLife() { note(" gone;"); }

private:
  void note(char const* pEvent)
  {
    if (mpNotes != nullptr)
    {
      *mpNotes += mpName;
      *mpNotes += pEvent;
    }
  }

  mstd::cAsciiString* mpNotes;
  char const* mpName;
};

#endif
