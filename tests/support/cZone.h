#ifndef MORTISE_TESTS_SUPPORT_CZONE_H
#define MORTISE_TESTS_SUPPORT_CZONE_H

#include <stdlib.h>
#include <time.h>

#include <string>

namespace support
{

/// Puts the process into a time zone for the life of the object.
class cZone
{
public:
  explicit cZone(char const* pName)
  {
    char const* const pFormer = getenv("TZ");
    mHadFormer = pFormer != nullptr;
    mFormer = mHadFormer ? pFormer : "";
    setenv("TZ", pName, 1);
    tzset();
  }
  cZone(cZone const&) = delete;
  cZone& operator=(cZone const&) = delete;
  ~cZone()
  {
    if (mHadFormer)
    {
      setenv("TZ", mFormer.c_str(), 1);
    }
    else
    {
      unsetenv("TZ");
    }
    tzset();
  }

private:
  bool mHadFormer;
  std::string mFormer;
};

} // namespace support

#endif
