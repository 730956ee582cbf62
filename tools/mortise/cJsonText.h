#ifndef MORTISE_TOOLS_CJSONTEXT_H
#define MORTISE_TOOLS_CJSONTEXT_H

#include <string>

/// JSON in one line. Bytes of texts that are no UTF-8 become the replacement character.
class cJsonText
{
public:
  std::string const& text() const { return mText; }

  /// The names are those of members of objects; elements of lists have none.
  void beginObject(char const* pName = nullptr) { begin(pName, '{'); }
  void endObject() { end('}'); }
  void beginList(char const* pName = nullptr) { begin(pName, '['); }
  void endList() { end(']'); }
  void add(char const* pName, std::string const& value);
  void add(char const* pName, char const* pValue) { add(pName, std::string(pValue)); }
  void add(char const* pName, bool bValue) { addRaw(pName, bValue ? "true" : "false"); }
  void addNull(char const* pName) { addRaw(pName, "null"); }
  template <class Texts>
  void addAll(char const* pName, Texts const& texts)
  {
    beginList(pName);
    for (std::string const& text : texts)
    {
      add(nullptr, text);
    }
    endList();
  }

private:
  void begin(char const* pName, char bracket);
  void end(char bracket);
  void addRaw(char const* pName, char const* pValue);
  void lead(char const* pName);
  void quote(std::string const& value);

  std::string mText;
};

#endif
