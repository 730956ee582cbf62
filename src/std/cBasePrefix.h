#ifndef MORTISE_STD_CBASEPREFIX_H
#define MORTISE_STD_CBASEPREFIX_H

namespace mstd
{

/// The prefixes by which a number tells its base. Both functions return the number of characters that the
/// prefix takes, 0 if there is none, and set the base only if there is one.
class cBasePrefix
{
public:
  /// "0x", "0h", "0d", "0b" or a base in angle brackets, at the start of at least 3 characters.
  template <class Char>
  static unsigned int detect(Char const* pText, unsigned int iLength, unsigned int& iBase)
  {
    if (pText[0] != '0')
    {
      return pText[0] == '<' ? bracketed(pText, iLength, iBase) : 0;
    }
    switch (pText[1])
    {
    case 'x':
    case 'h':
      iBase = 16;
      return 2;
    case 'd':
      iBase = 10;
      return 2;
    case 'b':
      iBase = 2;
      return 2;
    default:
      return 0;
    }
  }

  /// One or two decimal digits, with a value from 1 to 36, between one character that is not looked at
  /// and '>'. At least 3 characters.
  template <class Char>
  static unsigned int bracketed(Char const* pText, unsigned int iLength, unsigned int& iBase)
  {
    unsigned int iValue = 0;
    unsigned int i = 1;
    while (i < 3 && i < iLength && pText[i] >= '0' && pText[i] <= '9')
    {
      iValue = iValue * 10 + static_cast<unsigned int>(pText[i] - '0');
      ++i;
    }
    if (i == iLength || pText[i] != '>' || iValue < 1 || iValue > 36)
    {
      return 0;
    }
    iBase = iValue;
    return i + 1;
  }
};

} // namespace mstd

#endif
