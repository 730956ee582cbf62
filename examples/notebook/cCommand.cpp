#include "cCommand.h"

#include "cNote.h"
#include "cNotebookFile.h"
#include "cTagList.h"
#include "cTask.h"
#include "cText.h"

#include <errno.h>
#include <stdio.h>
#include <string.h>

char const* cCommand::usage()
{
  return "usage: notebook FILE COMMAND [ARGUMENT]...\n"
         "Keeps notes, tasks and lists of tags in a file.\n"
         "\n"
         "  add note TEXT...                       a note\n"
         "  add task YYYY-MM-DD [+PRIORITY] TEXT... something to do up to that day\n"
         "  add tags NAME TAG...                   a list of tags\n"
         "  done NUMBER                            marks a task as done\n"
         "  remove NUMBER                          removes an entry\n"
         "  list                                   shows all entries\n"
         "  export                                 writes them as Markdown\n"
         "\n"
         "Ends with 0, with 1 if the command failed (the file is then as it was), with 2 after wrong arguments.\n";
}

int cCommand::wrong(char const* text, char const* argument) const
{
  fprintf(stderr, "notebook: %s '%s'\nTry notebook --help.\n", text, cText::visible(cText::decode(argument)).c_str());
  return 2;
}

int cCommand::run(int iCount, char** ppArguments)
{
  if (iCount >= 1 && (strcmp(ppArguments[0], "-h") == 0 || strcmp(ppArguments[0], "--help") == 0))
  {
    fputs(usage(), stdout);
    return 0;
  }
  if (iCount == 0)
  {
    fputs("notebook: missing FILE and COMMAND\nTry notebook --help.\n", stderr);
    return 2;
  }
  if (iCount == 1)
  {
    return wrong("missing command behind the file", ppArguments[0]);
  }
  mpPath = ppArguments[0];
  char const* const command = ppArguments[1];
  miCount = iCount - 2;
  mppArguments = ppArguments + 2;
  for (int i = 0; i < miCount; i++)
  {
    if (!cText::isText(mppArguments[i]))
    {
      return wrong("not UTF-8:", mppArguments[i]);
    }
  }
  if (strcmp(command, "add") == 0)
  {
    char const* const kind = miCount > 0 ? mppArguments[0] : "";
    return strcmp(kind, cNote::Kind) == 0      ? addNote()
           : strcmp(kind, cTask::Kind) == 0    ? addTask()
           : strcmp(kind, cTagList::Kind) == 0 ? addTags()
                                               : wrong("no kind of entry:", kind);
  }
  if (strcmp(command, "done") == 0 || strcmp(command, "remove") == 0)
  {
    unsigned int iNumber = 0;
    return readNumber(iNumber) ? change(iNumber, strcmp(command, "remove") == 0)
                               : wrong("one number of an entry belongs behind", command);
  }
  if (strcmp(command, "list") == 0 || strcmp(command, "export") == 0)
  {
    return miCount == 0 ? list(strcmp(command, "export") == 0) : wrong("nothing belongs behind", command);
  }
  return wrong("unknown command", command);
}

bool cCommand::mayBeSaved(cNotebook const& notebook) const
{
  if (notebook.isNewer())
  {
    fprintf(stderr, "notebook: %s is of version %u; changing it with this version, %u, would lose what is new in it\n",
            cText::visible(cText::decode(mpPath)).c_str(), notebook.version(), cNotebook::Version);
  }
  return !notebook.isNewer();
}

/// All arguments from the one on, with a blank between them.
bool cCommand::readText(int iFirst, mucs::cString& text) const
{
  for (int i = iFirst; i < miCount; i++)
  {
    if (i > iFirst)
    {
      text += mucs::cString(" ");
    }
    text += cText::decode(mppArguments[i]);
  }
  return !text.empty();
}

bool cCommand::readDate(char const* text, mstd::cDate& date)
{
  unsigned int iYear = 0;
  unsigned int iMonth = 0;
  unsigned int iDay = 0;
  int iEnd = 0;
  if (sscanf(text, "%4u-%2u-%2u%n", &iYear, &iMonth, &iDay, &iEnd) != 3 || text[iEnd] != 0 ||
      !cTask::isDay(iDay, iMonth, iYear))
  {
    return false;
  }
  date = mstd::cDate(iDay, iMonth, iYear);
  return true;
}

bool cCommand::readNumber(unsigned int& iNumber) const
{
  int iEnd = 0;
  return miCount == 1 && strspn(mppArguments[0], "0123456789") == strlen(mppArguments[0]) &&
         strlen(mppArguments[0]) <= 9 && sscanf(mppArguments[0], "%u%n", &iNumber, &iEnd) == 1;
}

int cCommand::addNote()
{
  mstd::tAutoPtr<cEntry> pNote(new cNote);
  mucs::cString text;
  if (!readText(1, text))
  {
    return wrong("missing text behind", cNote::Kind);
  }
  pNote->setText(text);
  return add(pNote);
}

int cCommand::addTask()
{
  mstd::tAutoPtr<cTask> pTask(new cTask);
  mstd::cDate due;
  if (miCount < 2 || !readDate(mppArguments[1], due))
  {
    return wrong("a task has a day like 2026-12-31, not", miCount < 2 ? "" : mppArguments[1]);
  }
  pTask->setDue(due);
  int iText = 2;
  if (miCount > 2 && mppArguments[2][0] == '+')
  {
    char const* const digits = mppArguments[2] + 1;
    if (digits[0] < '1' || digits[0] > '9' || digits[1] != 0)
    {
      return wrong("a priority is +1 to +9, not", mppArguments[2]);
    }
    pTask->setPriority(digits[0] - '0');
    iText = 3;
  }
  mucs::cString text;
  if (!readText(iText, text))
  {
    return wrong("missing text behind", cTask::Kind);
  }
  pTask->setText(text);
  return add(pTask);
}

int cCommand::addTags()
{
  mstd::tAutoPtr<cTagList> pTags(new cTagList);
  if (miCount < 2)
  {
    return wrong("missing name behind", cTagList::Kind);
  }
  pTags->setText(cText::decode(mppArguments[1]));
  for (int i = 2; i < miCount; i++)
  {
    pTags->append(cText::decode(mppArguments[i]));
  }
  return add(pTags);
}

int cCommand::add(mstd::tAutoPtr<cEntry> pEntry)
{
  cNotebook notebook;
  cNotebookFile const file(mpPath, true);
  if (file.exists())
  {
    file.load(notebook);
  }
  if (!mayBeSaved(notebook))
  {
    return 1;
  }
  notebook.append(pEntry);
  file.save(notebook);
  printf("%u\n", notebook.at(notebook.length() - 1).number());
  return 0;
}

int cCommand::change(unsigned int iNumber, bool bRemove)
{
  cNotebook notebook;
  cNotebookFile const file(mpPath, true);
  file.load(notebook);
  if (!mayBeSaved(notebook))
  {
    return 1;
  }
  cTask* const pTask = dynamic_cast<cTask*>(notebook.find(iNumber));
  if (bRemove ? !notebook.remove(iNumber) : pTask == nullptr)
  {
    fprintf(stderr, "notebook: there is no %s %u\n", bRemove ? "entry" : "task", iNumber);
    return 1;
  }
  if (!bRemove)
  {
    pTask->setDone();
  }
  file.save(notebook);
  return 0;
}

int cCommand::list(bool bExport)
{
  cNotebook notebook;
  cNotebookFile(mpPath, false).load(notebook);
  for (unsigned int i = 0; i < notebook.length(); i++)
  {
    cEntry const& entry = notebook.at(i);
    mstd::cAsciiString const line = cText::visible(entry.line());
    if (bExport)
    {
      mstd::cAsciiString const created = entry.created().formatString("yyyy-mm-dd");
      printf("- %s `%s`, %s\n", line.c_str(), entry.kind(), created.c_str());
    }
    else
    {
      printf("%4u  %s  %s\n", entry.number(), entry.kind(), line.c_str());
    }
  }
  if (notebook.skipped() != 0)
  {
    fprintf(stderr, "notebook: %u entries are of kinds that this version does not know\n", notebook.skipped());
  }
  if (fflush(stdout) != 0 || ferror(stdout))
  {
    fprintf(stderr, "notebook: standard output: %s\n", strerror(errno));
    return 1;
  }
  return 0;
}
