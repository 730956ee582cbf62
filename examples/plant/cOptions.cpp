#include "cOptions.h"

#include "std/cAbstractException.h"
#include "std/cAsciiStringStream.h"

#include <math.h>
#include <stdlib.h>
#include <string.h>

char const* cOptions::usage()
{
  return "usage: plant [OPTION]...\n"
         "Shows figures of this machine, measured, kept, watched and printed by four modules that are loaded while it "
         "runs:\n"
         "meter, history, alarm and printer. It tells of each when it starts, finds what it needs, loses it, and "
         "goes.\n"
         "\n"
         "  -s, --seconds N         run for N seconds (10); 0: until it is interrupted\n"
         "  -i, --interval MSEC     milliseconds between two measurements (1000)\n"
         "  -p, --path DIR          look for modules in DIR; may be given several times (the folder plant-modules "
         "beside\n"
         "                          the program)\n"
         "  -r, --remove MODULE     remove a module after a third of the time, and start it again after two thirds; "
         "may "
         "be\n"
         "                          given several times\n"
         "  -L, --limit NAME=VALUE  alarm when the figure NAME is above VALUE: cpu, memory, disk (percent), received, "
         "sent\n"
         "                          (bytes per second)\n"
         "  -g, --graph FILE        write the graph of the work as dot, and as SVG if Graphviz is there, and beside "
         "it, "
         "with\n"
         "                          -components behind its name, that of the components\n"
         "  -l, --locale FILE       speak the language of a locale file\n"
         "      --proc DIR          read the figures of the kernel from DIR (/proc)\n"
         "      --disk PATH         watch the disk of PATH (/)\n"
         "  -v, --verbose           show what the library tells those who develop programs\n"
         "  -h, --help              show this\n"
         "\n"
         "Ends with 0 after its time, with 1 if something failed, with 2 after wrong arguments, and with 128 and the\n"
         "number of the signal when it is interrupted.\n";
}

char const* const* cOptions::modules()
{
  static char const* const names[] = {"meter", "history", "alarm", "printer", nullptr};
  return names;
}

cOptions::Result cOptions::wrong(char const* text, char const* argument)
{
  mError = "";
  mError << text << " '" << argument << "'";
  return Wrong;
}

bool cOptions::number(char const* text, unsigned int iMin, unsigned int iMax, unsigned int& result)
{
  try
  {
    unsigned long long const iValue = mstd::cAsciiString(text).toUInt();
    result = static_cast<unsigned int>(iValue);
    return iValue >= iMin && iValue <= iMax;
  }
  catch (mstd::cAbstractException const&)
  {
    return false;
  }
}

cOptions::Result cOptions::parseLimit(char const* argument)
{
  char const* const pEqual = strchr(argument, '=');
  char* pEnd = nullptr;
  double const limit = pEqual == nullptr ? 0 : strtod(pEqual + 1, &pEnd);
  if (pEqual == nullptr || pEqual == argument || pEnd == pEqual + 1 || *pEnd != 0 || !isfinite(limit))
  {
    return wrong("a limit is NAME=VALUE, not", argument);
  }
  mstd::cAsciiString name(argument);
  name.truncate(static_cast<unsigned int>(pEqual - argument));
  mLimits.append({name, limit});
  return Run;
}

cOptions::Result cOptions::parse(int argc, char** argv)
{
  for (int i = 1; i < argc; i++)
  {
    char const* const argument = argv[i];
    auto const is = [argument](char const* shortName, char const* longName) {
      return strcmp(argument, shortName) == 0 || strcmp(argument, longName) == 0;
    };
    if (is("-h", "--help"))
    {
      return Help;
    }
    if (is("-v", "--verbose"))
    {
      mVerbose = true;
      continue;
    }
    bool const isPath = is("-p", "--path");
    bool const isRemove = is("-r", "--remove");
    bool const isLimit = is("-L", "--limit");
    bool const isSeconds = is("-s", "--seconds");
    bool const isInterval = is("-i", "--interval");
    mstd::cAsciiString* const pText = is("-g", "--graph")      ? &mGraph
                                      : is("-l", "--locale")   ? &mLocale
                                      : is("--proc", "--proc") ? &mProcFolder
                                      : is("--disk", "--disk") ? &mDiskPath
                                                               : nullptr;
    if (!isPath && !isRemove && !isLimit && !isSeconds && !isInterval && pText == nullptr)
    {
      return wrong(argument[0] == '-' ? "unknown option" : "there is nothing to do with", argument);
    }
    if (++i == argc || argv[i][0] == 0)
    {
      return wrong("missing value after", argument);
    }
    char const* const value = argv[i];
    if (pText != nullptr)
    {
      *pText = value;
    }
    else if (isPath)
    {
      mPaths.append(mstd::cAsciiString(value));
    }
    else if (isRemove)
    {
      char const* const* ppName = modules();
      while (*ppName != nullptr && strcmp(*ppName, value) != 0)
      {
        ++ppName;
      }
      if (*ppName == nullptr)
      {
        return wrong("there is no module", value);
      }
      mRemoved.append(mstd::cAsciiString(value));
    }
    else if (isLimit)
    {
      if (parseLimit(value) == Wrong)
      {
        return Wrong;
      }
    }
    else if (isSeconds)
    {
      if (!number(value, 0, 1000000, miSeconds))
      {
        return wrong("a time is a number of seconds from 0 to 1000000, not", value);
      }
    }
    else if (!number(value, 1, 3600000, miIntervalMSec))
    {
      return wrong("an interval is a number of milliseconds from 1 to 3600000, not", value);
    }
  }
  if (miSeconds == 0 && !mRemoved.empty())
  {
    mError = "nothing is removed in the middle of a run without an end";
    return Wrong;
  }
  return Run;
}
