#include "cOptions.h"

#include "std/cAbstractException.h"
#include "std/cAsciiStringStream.h"

#include <string.h>

char const* cOptions::usage()
{
  return "usage: linewatch [OPTION]... [SOURCE]...\n"
         "Watches the lines of several sources at once: files, FIFOs, devices, or - for standard input (the default).\n"
         "Prints rates while it runs; at the end the totals, and the status of the work queue on standard error.\n"
         "\n"
         "  -m, --match TEXT      count the lines that contain TEXT; may be given several times\n"
         "  -p, --print           print the lines that contain one of the texts\n"
         "  -i, --interval MSEC   milliseconds between two lines of rates (1000)\n"
         "  -g, --graph FILE      write the graph of the work as dot, and as SVG if Graphviz is there\n"
         "  -l, --locale FILE     speak of failures in the language of a locale file\n"
         "  -h, --help            show this\n"
         "\n"
         "Ends with 0 when all sources have ended, with 1 if one of them failed, with 2 after wrong arguments, and "
         "with\n"
         "128 and the number of the signal when it is interrupted.\n";
}

cOptions::Result cOptions::wrong(char const* text, char const* argument)
{
  mError = "";
  mError << text << " '" << argument << "'";
  return Wrong;
}

cOptions::Result cOptions::parse(int argc, char** argv)
{
  bool bOptions = true;
  for (int i = 1; i < argc; i++)
  {
    char const* const argument = argv[i];
    auto const is = [argument](char const* shortName, char const* longName) {
      return strcmp(argument, shortName) == 0 || strcmp(argument, longName) == 0;
    };
    if (!bOptions || argument[0] != '-' || strcmp(argument, "-") == 0)
    {
      mSources.append(mstd::cAsciiString(argument));
    }
    else if (strcmp(argument, "--") == 0)
    {
      bOptions = false;
    }
    else if (is("-h", "--help"))
    {
      return Help;
    }
    else if (is("-p", "--print"))
    {
      mPrint = true;
    }
    else if (is("-m", "--match") || is("-g", "--graph") || is("-l", "--locale") || is("-i", "--interval"))
    {
      if (++i == argc)
      {
        return wrong("missing value after", argument);
      }
      char const* const value = argv[i];
      if (value[0] == 0)
      {
        return wrong("empty value after", argument);
      }
      if (is("-m", "--match"))
      {
        if (strchr(value, '\n') != nullptr)
        {
          return wrong("no line contains a line break:", argument);
        }
        mPatterns.append(mstd::cAsciiString(value));
      }
      else if (is("-g", "--graph"))
      {
        mGraph = value;
      }
      else if (is("-l", "--locale"))
      {
        mLocale = value;
      }
      else
      {
        try
        {
          unsigned long long const iMSec = mstd::cAsciiString(value).toUInt();
          if (iMSec == 0 || iMSec > 0xFFFFFFFFu)
          {
            return wrong("an interval is a number from 1 to 4294967295, not", value);
          }
          miIntervalMSec = static_cast<unsigned int>(iMSec);
        }
        catch (mstd::cAbstractException const&)
        {
          return wrong("an interval is a number of milliseconds, not", value);
        }
      }
    }
    else
    {
      return wrong("unknown option", argument);
    }
  }
  if (mPrint && mPatterns.empty())
  {
    return wrong("nothing to print without", "--match");
  }
  if (mSources.empty())
  {
    mSources.append(mstd::cAsciiString("-"));
  }
  return Run;
}
