// The root's locale, and what is read in it.

#include "pi/cAbstractOut.h"
#include "pi/cSystem.h"
#include "rmi/cConnectable.h"
#include "rmi/cDirectLocalSlotCall2.h"
#include "std/cRuntimeException.h"
#include "support/cCaptureOut.h"
#include "support/cFilesInMemory.h"
#include "textSupport.h"
#include "ucs/cLILocale.h"
#include "ucs/cLIMessage.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

using mucs::cLILocale;
using mucs::cLIMessage;
using mucs::cString;

/// German for the life of the object.
class cGerman
{
public:
  cGerman()
  {
    support::cFilesInMemory files{{"de.locale", "\"File %file% is missing\" = \"%file% ist nicht verf\xC3\xBCgbar\"\n"
                                                "\"Again %n%\" = \"Nochmals %n%\""}};
    mpi::system().locale.loadFromFile("de.locale", files);
  }
  ~cGerman() { mpi::system().locale.clear(); }
};

std::string printed(cLIMessage const& message)
{
  support::cCaptureOut out;
  mpi::system().out << message;
  return out.text();
}

TEST(LocaleOfTheSystem, IsEmptyAtFirst)
{
  cLILocale const& locale = mpi::system().locale;
  EXPECT_TRUE(locale.debugName().empty());
  EXPECT_TRUE(locale.name().empty());
  EXPECT_TRUE(locale.fileName().empty());
  EXPECT_EQ(locale.translator().length(), 0u);
  EXPECT_EQ(&locale, &mpi::system().locale);
}

TEST(LocaleOfTheSystem, TheDebugOutputSpeaksIt)
{
  cLIMessage const message = cLIMessage() << "$MTR$File %file% is missing"
                                          << "a.txt";
  EXPECT_EQ(printed(message), "File a.txt is missing");
  cGerman const german;
  EXPECT_EQ(printed(message), "a.txt ist nicht verf\xC3\xBCgbar");
}

TEST(LocaleOfTheSystem, TheDebugOutputGetsWhatHasNoTranslationInEnglish)
{
  cGerman const german;
  EXPECT_EQ(printed(cLIMessage() << "$MTR$Unknown %x%" << cString(L"\x20AC")), "Unknown \xE2\x82\xAC");
  EXPECT_EQ(printed(cLIMessage() << "$MNTR$Again %n%" << 1), "Again 1");
  EXPECT_EQ(printed(cLIMessage()), "");
}

TEST(LocaleOfTheSystem, TheStreamIsReturned)
{
  support::cCaptureOut out;
  cLIMessage const message = cLIMessage() << "$MTR$a";
  EXPECT_EQ(&(out << message), static_cast<mpi::cAbstractOut*>(&out));
}

TEST(LocaleOfTheSystem, ItsMissingTranslationsAreToldOfTheDebugOutputToo)
{
  class cListener : public mrmi::cConnectable
  {
  public:
    void slt(cLILocale const& locale, cLIMessage const& message)
    {
      isSystem = &locale == &mpi::system().locale;
      key = message.key().c_str();
    }
    bool isSystem = false;
    std::string key;
  } listener;
  mpi::system().locale.sigMissingTranslation().connect(
      mrmi::cDirectLocalSlotCall2<cListener, piVoid, cLILocale const&, cLIMessage const&>(listener, &cListener::slt));
  printed(cLIMessage() << "$MTR$Unknown");
  EXPECT_TRUE(listener.isSystem);
  EXPECT_EQ(listener.key, "Unknown");
}

TEST(LocaleOfTheSystem, GoesWithTheRoot)
{
  {
    support::cFilesInMemory files{{"de.locale", "Name = \"Deutsch\""}};
    mpi::system().locale.loadFromFile("de.locale", files);
  }
  EXPECT_EQ(mpi::system().locale.name(), cString("Deutsch"));
  mpi::cSystem::cleanup();
  EXPECT_TRUE(mpi::system().locale.name().empty());
}

TEST(LocaleOfTheSystem, ExceptionsAreReadInTheLocaleThatIsGiven)
{
  cLILocale parent(nullptr);
  cLILocale locale(nullptr);
  locale.link(&parent);
  locale.translator().addTranslation("First %n%", "Erstens %n%");
  parent.translator().addTranslation("Second", "Zweitens");
  mstd::cRuntimeException e(cLIMessage() << "$MTR$First %n%" << 1, nullptr, 0);
  e.link(mstd::cRuntimeException(cLIMessage() << "$MTR$Second", nullptr, 0));
  e.link(mstd::cRuntimeException(cLIMessage() << "$MTR$Third", nullptr, 0));

  cString text("> ");
  mstd::cAbstractException::createMessage(e, text, 0, &locale);
  EXPECT_EQ(text, cString("> Erstens 1"));
  e.createMessage(text, ", ", mstd::cAbstractException::WithHistory, &locale);
  EXPECT_EQ(text, cString("Erstens 1, Zweitens, Third"));
  e.createMessage(text, "\n", mstd::cAbstractException::WithHistory | mstd::cAbstractException::Indent, &locale);
  EXPECT_EQ(text, cString("Erstens 1\n Zweitens\n  Third"));
  e.createMessage(text, ", ", mstd::cAbstractException::WithHistory, nullptr);
  EXPECT_EQ(text, cString("First 1, Second, Third"));
}

TEST(LocaleOfTheSystem, ExceptionsWithoutALocaleAreEnglishWhateverTheSystemSpeaks)
{
  cGerman const german;
  mstd::cRuntimeException const e(cLIMessage() << "$MTR$Again %n%" << 1, nullptr, 0);
  cString text;
  mstd::cAbstractException::createMessage(e, text);
  EXPECT_EQ(text, cString("Again 1"));
  support::cCaptureOut out;
  e.dump();
  EXPECT_TRUE(out.contains("Again 1")) << out.text();
}

} // namespace
