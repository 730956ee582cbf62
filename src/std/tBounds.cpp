#include "std/tBounds.h"

#include "std/cSTDExceptions.h"

void mstd::tBounds::throwIndexOutOfRange(char const* container, char const* operation, unsigned int index,
                                         unsigned int length)
{
  cSTDExceptions::throwOutOfRange(container, operation, cSTDExceptions::IndexOutOfRange, index, 0,
                                  length == 0 ? 0 : length - 1);
}

void mstd::tBounds::throwValueOutOfRange(char const* container, char const* operation, unsigned int value,
                                         unsigned int max)
{
  cSTDExceptions::throwOutOfRange(container, operation, cSTDExceptions::ValueOutOfRange, value, 0, max);
}

void mstd::tBounds::throwSizeOutOfRange(char const* container, char const* operation, unsigned int size,
                                        unsigned int max)
{
  cSTDExceptions::throwOutOfRange(container, operation, cSTDExceptions::SizeOutOfRange, size, 0, max);
}

void mstd::tBounds::throwStartSize(unsigned long long total, unsigned long long start, unsigned long long size,
                                   bool overflow, char const* container, char const* operation)
{
  if (overflow)
  {
    cSTDExceptions::throwOutOfBounds(container, operation);
  }
  if (start > total)
  {
    cSTDExceptions::throwOutOfRange(container, operation, cSTDExceptions::IndexOutOfRange,
                                    static_cast<long long>(start), 0,
                                    static_cast<long long>(total == 0 ? 0 : total - 1));
  }
  cSTDExceptions::throwOutOfRange(container, operation, cSTDExceptions::SizeOutOfRange, static_cast<long long>(size), 0,
                                  static_cast<long long>(total - start));
}
