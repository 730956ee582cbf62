// The compiler makes one variable of this for the whole process, and whatever library has it first stays for ever.
inline unsigned int& uses()
{
  static unsigned int uses = 0;
  return uses;
}

unsigned int countUses()
{
  return ++uses();
}
