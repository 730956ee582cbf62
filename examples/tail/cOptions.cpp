#include "cOptions.h"

#include "std/cAbstractException.h"
#include "std/cAsciiStringStream.h"

#include <string.h>

char const* cOptions::usage()
{
  return "usage: tail [OPTION]... FILE...\n"
         "Shows the last lines of files, and then what is appended to them, until it is interrupted.\n"
         "A file that is replaced by another, cut or removed is followed on: its path is what counts.\n"
         "\n"
         "  -n, --lines N         show the last N lines first (10)\n"
         "  -i, --interval MSEC   look for changes every MSEC milliseconds, and for another file every fourth time "
         "(250)\n"
         "  -l, --locale FILE     tell what happens in the language of this locale file\n"
         "  -h, --help            show this\n"
         "\n"
         "Ends with 128 and the number of the signal when it is interrupted, with 1 if no file can be followed any "
         "more,\n"
         "with 2 after wrong arguments.\n";
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

cOptions::Result cOptions::parse(int argc, char** argv)
{
  bool bOptions = true;
  for (int i = 1; i < argc; i++)
  {
    char const* const argument = argv[i];
    auto const is = [argument](char const* shortName, char const* longName) {
      return strcmp(argument, shortName) == 0 || strcmp(argument, longName) == 0;
    };
    if (!bOptions || argument[0] != '-')
    {
      mFiles.append(mstd::cAsciiString(argument));
    }
    else if (strcmp(argument, "--") == 0)
    {
      bOptions = false;
    }
    else if (is("-h", "--help"))
    {
      return Help;
    }
    else if (is("-n", "--lines") || is("-i", "--interval") || is("-l", "--locale"))
    {
      if (++i == argc)
      {
        return wrong("missing value after", argument);
      }
      if (is("-l", "--locale"))
      {
        mLocale = argv[i];
      }
      else if (is("-n", "--lines"))
      {
        if (!number(argv[i], 0, 0xFFFFFFFFu, miLines))
        {
          return wrong("a number of lines is one from 0 to 4294967295, not", argv[i]);
        }
      }
      else if (!number(argv[i], 1, 3600000, miIntervalMSec))
      {
        return wrong("an interval is a number of milliseconds from 1 to 3600000, not", argv[i]);
      }
    }
    else
    {
      return wrong("unknown option", argument);
    }
  }
  if (mFiles.empty())
  {
    mError = "no file is named";
    return Wrong;
  }
  return Run;
}
