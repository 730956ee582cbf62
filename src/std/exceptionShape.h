#ifndef MORTISE_STD_EXCEPTIONSHAPE_H
#define MORTISE_STD_EXCEPTIONSHAPE_H

// The shape that every concrete exception class shares. Each class still writes its constructors, its swap() and its
// copy constructor, since these know its fields; what is the same everywhere stands here:
//
//   class MORTISE_API cMyException : public mstd::cRuntimeException
//   {
//   public:
//     cMyException();
//     explicit cMyException(unsigned int port);
//     MORTISE_EXCEPTION(cMyException)
//
//     unsigned int port() const { return miPort; }
//   private:
//     unsigned int miPort;
//   };
//
// and in the source, within the namespace of the class:
//
//   cMyException::cMyException(cMyException const& other) : cRuntimeException(other), miPort(other.miPort) {}
//   void cMyException::swap(cMyException& other) noexcept { cRuntimeException::swap(other); std::swap(miPort,
//   other.miPort); } MORTISE_EXCEPTION_BODY(cMyException)
//
// A field whose copy can run out of memory is copied by copyField(), see cAbstractException.

/// Declares the members that every concrete exception class has; to stand in its public section.
#define MORTISE_EXCEPTION(Class)                                                                                       \
  Class(Class const& other);                                                                                           \
  ~Class() override;                                                                                                   \
  Class& operator=(Class const& other);                                                                                \
  void swap(Class& other) noexcept;                                                                                    \
  ::mstd::cAbstractException* createObject() const override;                                                           \
  ::mstd::cAsciiString typeName() const override;

/// Defines them, but for the copy constructor and swap().
#define MORTISE_EXCEPTION_BODY(Class)                                                                                  \
  Class::~Class() {}                                                                                                   \
  Class& Class::operator=(Class const& other)                                                                          \
  {                                                                                                                    \
    Class copy(other);                                                                                                 \
    swap(copy);                                                                                                        \
    return *this;                                                                                                      \
  }                                                                                                                    \
  ::mstd::cAbstractException* Class::createObject() const                                                              \
  {                                                                                                                    \
    return new Class(*this);                                                                                           \
  }                                                                                                                    \
  ::mstd::cAsciiString Class::typeName() const                                                                         \
  {                                                                                                                    \
    return ::mstd::cAsciiString(#Class);                                                                               \
  }

#endif
