#ifndef MORTISE_EXAMPLES_NOTEBOOK_CCOMMAND_H
#define MORTISE_EXAMPLES_NOTEBOOK_CCOMMAND_H

#include "cNotebook.h"
#include "std/cDate.h"

/// What the command line asks for.
class cCommand
{
public:
  static char const* usage();

  /// The arguments behind the name of the program. Returns what the program ends with.
  int run(int iCount, char** ppArguments);

private:
  int wrong(char const* text, char const* argument) const;
  bool mayBeSaved(cNotebook const& notebook) const;
  int add(mstd::tAutoPtr<cEntry> pEntry);
  int addNote();
  int addTask();
  int addTags();
  int done();
  int remove();
  int list(bool bExport);
  int change(unsigned int iNumber, bool bRemove);
  bool readText(int iFirst, mucs::cString& text) const;
  static bool readDate(char const* text, mstd::cDate& date);
  bool readNumber(unsigned int& iNumber) const;

  char const* mpPath = nullptr;
  int miCount = 0; // of the arguments behind file and command
  char** mppArguments = nullptr;
};

#endif
