// A library that has no entry points, and needs a module that has them all.

extern "C" void moduleVersion(unsigned int& iMajor, unsigned int& iMinor);

extern "C" __attribute__((visibility("default"))) unsigned int mortiseTestAsk()
{
  unsigned int major = 0;
  unsigned int minor = 0;
  moduleVersion(major, minor);
  return major;
}
