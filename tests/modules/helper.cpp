// A library that modules need.

extern "C" __attribute__((visibility("default"))) unsigned int mortiseTestHelp()
{
  return 1;
}
