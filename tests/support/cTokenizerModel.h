#ifndef MORTISE_TESTS_SUPPORT_CTOKENIZERMODEL_H
#define MORTISE_TESTS_SUPPORT_CTOKENIZERMODEL_H

#include <string>
#include <vector>

namespace support
{

/// The plainest tokenizer that does what mstd::tTokenizer does: every search starts anew and compares letter by letter.
class cTokenizerModel
{
public:
  struct cSpec
  {
    std::string text;
    bool isKey;
    unsigned int id;
    unsigned int hints;
  };
  struct cContext
  {
    std::vector<cSpec> specs;
    std::string quote;
  };

  explicit cTokenizerModel(std::string const& input) : mInput(input), mPosition(0) {}

  long position() const { return mPosition; }

  bool getNextToken(cContext& context, std::string& token, unsigned int& id)
  {
    id = 0;
    long const length = static_cast<long>(mInput.size());
    long position = mPosition;
    if (position >= length)
    {
      return false;
    }
    for (;;)
    {
      cSpec* hit = nullptr;
      long place = 0;
      for (cSpec& spec : context.specs)
      {
        if (!spec.isKey && separatorAt(context, spec.text, position, place))
        {
          hit = &spec;
          break;
        }
      }
      if (hit == nullptr)
      {
        break;
      }
      ++hit->hints;
      position = place + static_cast<long>(hit->text.size());
      if (position >= length)
      {
        mPosition = position;
        return false;
      }
    }
    cSpec* best = nullptr;
    long bestPlace = 0;
    for (cSpec& spec : context.specs)
    {
      long const place = occurrence(context, spec.text, position, best, bestPlace);
      if (place >= 0 && (best == nullptr || place < bestPlace))
      {
        best = &spec;
        bestPlace = place;
      }
    }
    long end = length;
    if (best != nullptr && bestPlace == position)
    {
      ++best->hints;
      id = best->id;
      end = position + static_cast<long>(best->text.size());
    }
    else if (best != nullptr)
    {
      end = bestPlace;
    }
    token = mInput.substr(static_cast<size_t>(position), static_cast<size_t>(end - position));
    mPosition = end;
    return true;
  }

  static std::string removeQuotes(std::string token, std::string const& quote)
  {
    for (size_t at = 0; !quote.empty() && (at = token.find(quote, at)) != std::string::npos;)
    {
      token.erase(at, quote.size());
      if (token.compare(at, quote.size(), quote) == 0)
      {
        at += quote.size();
      }
    }
    return token;
  }

private:
  bool stands(std::string const& text, long place, long end) const
  {
    long const length = static_cast<long>(text.size());
    for (long i = 0; i < length; ++i)
    {
      if (place + i >= end || mInput[static_cast<size_t>(place + i)] != text[static_cast<size_t>(i)])
      {
        return false;
      }
    }
    return length != 0;
  }

  bool isQuoted(cContext const& context, long place) const
  {
    long const length = static_cast<long>(context.quote.size());
    return length != 0 && place >= length && stands(context.quote, place - length, place);
  }

  bool separatorAt(cContext const& context, std::string const& text, long position, long& place) const
  {
    long const length = static_cast<long>(mInput.size());
    for (place = position; stands(text, place, length); place += static_cast<long>(text.size()))
    {
      if (!isQuoted(context, place))
      {
        return true;
      }
    }
    return false;
  }

  long occurrence(cContext const& context, std::string const& text, long start, cSpec const* best, long bestPlace) const
  {
    long const length = static_cast<long>(text.size());
    for (long place = start;; ++place)
    {
      long end = static_cast<long>(mInput.size());
      if (best != nullptr)
      {
        long const bestLength = static_cast<long>(best->text.size());
        long const window = (bestPlace - start) - bestLength + 1 + (bestLength > length ? bestLength : length);
        end = start + window < end ? start + window : end;
      }
      if (place >= end)
      {
        return -1;
      }
      if (!stands(text, place, end))
      {
        continue;
      }
      if (!isQuoted(context, place))
      {
        return place;
      }
      start = place + length;
      place = start - 1;
    }
  }

  std::string mInput;
  long mPosition;
};

} // namespace support

#endif
