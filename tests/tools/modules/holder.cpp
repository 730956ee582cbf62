// A library that needs a module, and holds it as long as it is loaded itself.

extern "C" __attribute__((visibility("default"))) unsigned int mortiseTestHold()
{
  return 1;
}
