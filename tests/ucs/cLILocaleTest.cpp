#include "ucs/cLILocale.h"

#include "rmi/cConnectable.h"
#include "rmi/cDirectLocalSlotCall0.h"
#include "rmi/cDirectLocalSlotCall2.h"
#include "support/cFilesInMemory.h"
#include "support/cTempDir.h"
#include "support/expectFailure.h"
#include "textSupport.h"
#include "ucs/cLIMessage.h"

#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace
{

using mucs::cLILocale;
using mucs::cLIMessage;
using mucs::cString;
using support::cFilesInMemory;

std::string utf8(cString const& text)
{
  return support::bytes(text.toUTF8());
}

/// Text of a key in a locale and its parents, "(none)" without one.
std::string found(cLILocale const& locale, char const* key)
{
  cString text;
  return locale.translate(mstd::cAsciiString(key), text, nullptr) ? utf8(text) : "(none)";
}

void load(cLILocale& locale, std::string const& content)
{
  cFilesInMemory files{{"dir/de.locale", content}};
  locale.loadFromFile("dir/de.locale", files);
}

/// Class and text of what loading such a file raises.
std::string refused(std::string const& content)
{
  cLILocale locale(nullptr);
  return support::failureText([&] { load(locale, content); });
}

std::string const runtime = "cRuntimeException: ";

class cListener : public mrmi::cConnectable
{
public:
  void sltChanged()
  {
    ++changes;
    if (onChanged)
    {
      onChanged();
    }
  }
  void sltMissing(cLILocale const& locale, cLIMessage const& message)
  {
    missing.push_back(std::string(locale.debugName().c_str()) + ":" + message.key().c_str());
  }
  void sltTranslate(cLIMessage const& message, cString& out) { out = cString(message.key(), '?'); }

  unsigned int changes = 0;
  std::vector<std::string> missing;
  std::function<void()> onChanged;
};

void listen(cLILocale& locale, cListener& listener)
{
  locale.sigChanged.connect(mrmi::cDirectLocalSlotCall0(listener, &cListener::sltChanged));
}

void listenForMissing(cLILocale& locale, cListener& listener)
{
  locale.sigMissingTranslation().connect(
      mrmi::cDirectLocalSlotCall2<cListener, piVoid, cLILocale const&, cLIMessage const&>(listener,
                                                                                          &cListener::sltMissing));
}

// --- a locale by itself ----------------------------------------------------------------------------------------------

TEST(cLILocale, IsEmptyAtFirst)
{
  cLILocale const locale("debug");
  EXPECT_STREQ(locale.debugName().c_str(), "debug");
  EXPECT_TRUE(locale.name().empty());
  EXPECT_TRUE(locale.flag().empty());
  EXPECT_TRUE(locale.fileName().empty());
  EXPECT_EQ(locale.translator().length(), 0u);
  EXPECT_EQ(locale.parent(), nullptr);
}

TEST(cLILocale, NeedsNoDebugName)
{
  cLILocale locale(nullptr);
  EXPECT_TRUE(locale.debugName().empty());
  locale.setDebugName("later");
  EXPECT_STREQ(locale.debugName().c_str(), "later");
}

TEST(cLILocale, CannotBeCopied)
{
  EXPECT_FALSE(std::is_copy_constructible<cLILocale>::value);
  EXPECT_FALSE(std::is_copy_assignable<cLILocale>::value);
  EXPECT_TRUE(std::has_virtual_destructor<cLILocale>::value);
}

TEST(cLILocale, TranslatesMessages)
{
  cLILocale locale(nullptr);
  locale.translator().addTranslation("A %x% b %y%", "%y% dann %x%");
  cLIMessage const message = cLIMessage() << "$MTR$A %x% b %y%" << 1 << 2;
  cString text("before");
  EXPECT_TRUE(locale.translate(message, text, nullptr));
  EXPECT_EQ(text, cString("2 dann 1"));
  EXPECT_EQ(locale.translate(message), cString("2 dann 1"));
}

TEST(cLILocale, LeavesTheUntranslatedTextWithoutATranslation)
{
  cLILocale const locale(nullptr);
  cLIMessage const message = cLIMessage() << "$MTR$A %x% b" << 1;
  cString text("before");
  EXPECT_FALSE(locale.translate(message, text, nullptr));
  EXPECT_EQ(text, cString("A 1 b"));
  EXPECT_EQ(locale.translate(message), cString("A 1 b"));
}

TEST(cLILocale, TranslatesKeys)
{
  cLILocale locale(nullptr);
  locale.translator().addTranslation("Yes", "Ja");
  cString text;
  EXPECT_TRUE(locale.translate(mstd::cAsciiString("Yes"), text, nullptr));
  EXPECT_EQ(text, cString("Ja"));
  EXPECT_EQ(locale.translate(mstd::cAsciiString("Yes")), cString("Ja"));
  EXPECT_FALSE(locale.translate(mstd::cAsciiString("No"), text, nullptr));
  EXPECT_EQ(text, cString("No"));
  EXPECT_EQ(locale.translate(mstd::cAsciiString("No")), cString("No"));
}

TEST(cLILocale, AKeyIsTakenAsItStands)
{
  cLILocale locale(nullptr);
  locale.translator().addTranslation("Yes", "Ja");
  EXPECT_EQ(locale.translate(mstd::cAsciiString("$MTR$Yes")), cString("$MTR$Yes"));
}

// --- parents ---------------------------------------------------------------------------------------------------------

TEST(cLILocale, FallsBackOnItsParents)
{
  cLILocale grandparent("grandparent");
  cLILocale parent("parent");
  cLILocale child("child");
  parent.link(&grandparent);
  child.link(&parent);
  EXPECT_EQ(child.parent(), &parent);
  grandparent.translator().addTranslation("a", "a grandparent");
  grandparent.translator().addTranslation("b", "b grandparent");
  grandparent.translator().addTranslation("c", "c grandparent");
  parent.translator().addTranslation("a", "a parent");
  parent.translator().addTranslation("b", "b parent");
  child.translator().addTranslation("a", "a child");
  EXPECT_EQ(found(child, "a"), "a child");
  EXPECT_EQ(found(child, "b"), "b parent");
  EXPECT_EQ(found(child, "c"), "c grandparent");
  EXPECT_EQ(found(child, "d"), "(none)");
  EXPECT_EQ(found(parent, "a"), "a parent");
}

TEST(cLILocale, AChainWithoutTheKeyLeavesTheUntranslatedText)
{
  cLILocale parent(nullptr);
  cLILocale child(nullptr);
  child.link(&parent);
  cString text;
  EXPECT_FALSE(child.translate(cLIMessage() << "$MTR$A %x%" << 1, text, nullptr));
  EXPECT_EQ(text, cString("A 1"));
}

TEST(cLILocale, ALinkReplacesTheFormerOne)
{
  cLILocale first(nullptr);
  cLILocale second(nullptr);
  cLILocale child(nullptr);
  cListener listener;
  listen(child, listener);
  child.link(&first);
  child.link(&second);
  EXPECT_EQ(child.parent(), &second);
  first.sigChanged();
  EXPECT_EQ(listener.changes, 0u);
  second.sigChanged();
  EXPECT_EQ(listener.changes, 1u);
  child.link(nullptr);
  EXPECT_EQ(child.parent(), nullptr);
  second.sigChanged();
  EXPECT_EQ(listener.changes, 1u);
}

TEST(cLILocale, LinkingFiresNothing)
{
  cLILocale parent(nullptr);
  cLILocale child(nullptr);
  cListener listener;
  listen(parent, listener);
  listen(child, listener);
  child.link(&parent);
  child.link(nullptr);
  EXPECT_EQ(listener.changes, 0u);
}

TEST(cLILocale, ALocaleThatGoesUnlinksItselfFromItsParent)
{
  cLILocale parent(nullptr);
  {
    cLILocale child(nullptr);
    child.link(&parent);
    EXPECT_TRUE(parent.sigChanged.isConnected());
  }
  EXPECT_FALSE(parent.sigChanged.isConnected());
  parent.sigChanged();
}

TEST(cLILocale, AParentThatGoesUnlinksItselfFromAllItsChildren)
{
  std::unique_ptr<cLILocale> pParent(new cLILocale(nullptr));
  pParent->translator().addTranslation("a", "1");
  cLILocale first(nullptr);
  cLILocale second(nullptr);
  cLILocale third(nullptr);
  cListener listener;
  for (cLILocale* pChild : {&first, &second, &third})
  {
    pChild->link(pParent.get());
    listen(*pChild, listener);
  }
  second.link(nullptr); // from the middle
  EXPECT_EQ(found(first, "a"), "1");
  pParent.reset();
  EXPECT_EQ(first.parent(), nullptr);
  EXPECT_EQ(third.parent(), nullptr);
  EXPECT_EQ(found(first, "a"), "(none)");
  EXPECT_EQ(listener.changes, 0u);
  first.link(&third);
  EXPECT_EQ(first.parent(), &third);
}

TEST(cLILocale, ARingOfParentsIsAnAssertionFailure)
{
  cLILocale a(nullptr);
  cLILocale b(nullptr);
  cLILocale c(nullptr);
  b.link(&a);
  c.link(&b);
  support::expectAssertion([&] { a.link(&c); }, "!pParent->isBelow(*this)", "ucs/cLILocale");
  support::expectAssertion([&] { c.link(&c); }, "!pParent->isBelow(*this)", "ucs/cLILocale");
  EXPECT_EQ(a.parent(), nullptr);
  EXPECT_EQ(c.parent(), &b);
}

TEST(cLILocale, ALongChainOfParentsTakesNoStack)
{
  unsigned int const iCount = 100000;
  std::vector<std::unique_ptr<cLILocale>> chain;
  for (unsigned int i = 0; i < iCount; ++i)
  {
    chain.emplace_back(new cLILocale(nullptr));
    if (i != 0)
    {
      // from the end, so that the check for rings has a short way
      chain[i - 1]->link(chain[i].get());
    }
  }
  chain.back()->translator().addTranslation("a", "1");
  EXPECT_EQ(found(*chain.front(), "a"), "1");
  EXPECT_EQ(found(*chain.front(), "b"), "(none)");
}

// --- signals ---------------------------------------------------------------------------------------------------------

TEST(cLILocale, ItsSignalsMayBeUnconnected)
{
  cLILocale locale(nullptr);
  locale.sigChanged();
  locale.sigMissingTranslation();
  EXPECT_EQ(found(locale, "a"), "(none)");
  cString text;
  locale.sigTranslate()(cLIMessage(), text);
}

TEST(cLILocale, LoadingFiresOnceWhenItIsDone)
{
  cLILocale locale(nullptr);
  cListener listener;
  std::string seen;
  listener.onChanged = [&] { seen += found(locale, "a") + " " + support::ascii(locale.fileName()); };
  listen(locale, listener);
  load(locale, "\"a\" = \"1\"; Name = \"x\"; Flag = \"y\"");
  EXPECT_EQ(listener.changes, 1u);
  EXPECT_EQ(seen, "1 dir/de.locale");
}

TEST(cLILocale, ClearingFiresOnceWhenItIsDone)
{
  cLILocale locale(nullptr);
  load(locale, "\"a\" = \"1\"");
  cListener listener;
  std::string seen;
  listener.onChanged = [&] { seen += found(locale, "a"); };
  listen(locale, listener);
  locale.clear();
  EXPECT_EQ(listener.changes, 1u);
  EXPECT_EQ(seen, "(none)");
}

TEST(cLILocale, AFailedLoadingFiresNothing)
{
  cLILocale locale(nullptr);
  cListener listener;
  listen(locale, listener);
  EXPECT_EQ(support::failureText([&] { load(locale, "\"a\""); }), runtime + "\"=\" expected!");
  EXPECT_EQ(listener.changes, 0u);
}

TEST(cLILocale, AChangeRunsDownTheChain)
{
  cLILocale grandparent(nullptr);
  cLILocale parent(nullptr);
  cLILocale child(nullptr);
  cLILocale other(nullptr);
  parent.link(&grandparent);
  child.link(&parent);
  other.link(&grandparent);
  cListener ofChild;
  cListener ofOther;
  cListener ofGrandparent;
  listen(child, ofChild);
  listen(other, ofOther);
  listen(grandparent, ofGrandparent);
  load(grandparent, "\"a\" = \"1\"");
  EXPECT_EQ(ofChild.changes, 1u);
  EXPECT_EQ(ofOther.changes, 1u);
  EXPECT_EQ(ofGrandparent.changes, 1u);
  load(parent, "\"a\" = \"2\"");
  EXPECT_EQ(ofChild.changes, 2u);
  EXPECT_EQ(ofOther.changes, 1u);
  EXPECT_EQ(ofGrandparent.changes, 1u);
}

TEST(cLILocale, AChildMayGoWhileItsParentTellsOfAChange)
{
  cLILocale parent(nullptr);
  std::unique_ptr<cLILocale> pChild(new cLILocale(nullptr));
  cLILocale sibling(nullptr);
  cListener first;
  cListener last;
  listen(parent, first);
  pChild->link(&parent);
  sibling.link(&parent);
  listen(sibling, last);
  first.onChanged = [&] { pChild.reset(); };
  parent.sigChanged();
  EXPECT_EQ(last.changes, 1u);
}

TEST(cLILocale, TheEndOfTheChainTellsOfAMissingTranslationOfTheLocaleThatWasAskedFirst)
{
  cLILocale grandparent("grandparent");
  cLILocale parent("parent");
  cLILocale child("child");
  parent.link(&grandparent);
  child.link(&parent);
  cListener atTop;
  cListener below;
  listenForMissing(grandparent, atTop);
  listenForMissing(parent, below);
  listenForMissing(child, below);
  parent.translator().addTranslation("there", "da");
  cString text;
  EXPECT_FALSE(child.translate(cLIMessage() << "$MTR$one %x%", text, nullptr));
  EXPECT_FALSE(parent.translate(cLIMessage() << "$MTR$two", text, nullptr));
  EXPECT_FALSE(grandparent.translate(cLIMessage() << "$MTR$three", text, nullptr));
  EXPECT_TRUE(child.translate(cLIMessage() << "$MTR$there", text, nullptr));
  EXPECT_EQ(atTop.missing, (std::vector<std::string>{"child:one %x%", "parent:two", "grandparent:three"}));
  EXPECT_TRUE(below.missing.empty());
}

TEST(cLILocale, ARequesterIsPassedOn)
{
  cLILocale parent("parent");
  cLILocale child("child");
  cLILocale requester("requester");
  child.link(&parent);
  cListener listener;
  listenForMissing(parent, listener);
  cString text;
  EXPECT_FALSE(child.translate(mstd::cAsciiString("a"), text, &requester));
  EXPECT_FALSE(parent.translate(mstd::cAsciiString("b"), text, &requester));
  EXPECT_EQ(listener.missing, (std::vector<std::string>{"requester:a", "requester:b"}));
}

TEST(cLILocale, TheTextIsThereWhenAMissingTranslationIsTold)
{
  cLILocale locale(nullptr);
  cString text;
  std::string seen;
  class cAsking : public mrmi::cConnectable
  {
  public:
    void slt(cLILocale const&, cLIMessage const&) { seen = support::ascii(*pText); }
    cString* pText;
    std::string seen;
  } asking;
  asking.pText = &text;
  locale.sigMissingTranslation().connect(
      mrmi::cDirectLocalSlotCall2<cAsking, piVoid, cLILocale const&, cLIMessage const&>(asking, &cAsking::slt));
  locale.translate(cLIMessage() << "$MTR$A %x%" << 1, text, nullptr);
  EXPECT_EQ(asking.seen, "A 1");
}

TEST(cLILocale, TheTranslateSignalIsForTheApplicationAlone)
{
  cLILocale locale(nullptr);
  cListener listener;
  locale.sigTranslate().connect(
      mrmi::cDirectLocalSlotCall2<cListener, piVoid, cLIMessage const&, cString&>(listener, &cListener::sltTranslate));
  locale.translator().addTranslation("a %x%", "b %x%");
  cLIMessage const message = cLIMessage() << "$MTR$a %x%" << 1;
  EXPECT_EQ(locale.translate(message), cString("b 1"));
  cString text;
  locale.sigTranslate()(message, text);
  EXPECT_EQ(text, cString("a %x%"));
  EXPECT_EQ(&locale.sigTranslate(), &locale.sigTranslate());
}

// --- replacing -------------------------------------------------------------------------------------------------------

TEST(cLILocale, ClearingEmptiesTheLanguageAlone)
{
  cLILocale parent(nullptr);
  cLILocale locale("debug");
  locale.link(&parent);
  load(locale, "Name = \"x\"; Flag = \"y\"; \"a\" = \"1\"");
  locale.clear();
  EXPECT_TRUE(locale.name().empty());
  EXPECT_TRUE(locale.flag().empty());
  EXPECT_TRUE(locale.fileName().empty());
  EXPECT_EQ(locale.translator().length(), 0u);
  EXPECT_STREQ(locale.debugName().c_str(), "debug");
  EXPECT_EQ(locale.parent(), &parent);
}

TEST(cLILocale, SwapExchangesTheLanguagesAndKeepsSignalsAndDebugNames)
{
  cLILocale parent(nullptr);
  cLILocale a("a");
  cLILocale b("b");
  a.link(&parent);
  load(a, "Name = \"x\"; Flag = \"y\"; \"a\" = \"1\"");
  cListener ofA;
  cListener ofB;
  listen(a, ofA);
  listen(b, ofB);
  a.swap(b);
  EXPECT_EQ(ofA.changes + ofB.changes, 0u);
  EXPECT_STREQ(a.debugName().c_str(), "a");
  EXPECT_TRUE(a.name().empty());
  EXPECT_TRUE(a.fileName().empty());
  EXPECT_EQ(a.parent(), nullptr);
  EXPECT_EQ(b.name(), cString("x"));
  EXPECT_EQ(b.flag(), cString("dir/y"));
  EXPECT_EQ(b.fileName(), cString("dir/de.locale"));
  EXPECT_EQ(found(b, "a"), "1");
  EXPECT_EQ(b.parent(), &parent);
  parent.sigChanged();
  EXPECT_EQ(ofA.changes, 0u);
  EXPECT_EQ(ofB.changes, 1u);
  b.swap(b);
  EXPECT_EQ(b.name(), cString("x"));
  a.swap(b); // and back: the parent comes from the right
  EXPECT_EQ(a.parent(), &parent);
  EXPECT_EQ(b.parent(), nullptr);
  parent.sigChanged();
  EXPECT_EQ(ofA.changes, 1u);
  EXPECT_EQ(ofB.changes, 1u);
}

TEST(cLILocale, SwapWithAParentIsAnAssertionFailure)
{
  cLILocale grandparent(nullptr);
  cLILocale parent(nullptr);
  cLILocale child(nullptr);
  parent.link(&grandparent);
  child.link(&parent);
  load(child, "Name = \"x\"");
  std::string const condition = "!isBelow(lOther) && !lOther.isBelow(*this)";
  support::expectAssertion([&] { child.swap(grandparent); }, condition, "ucs/cLILocale");
  support::expectAssertion([&] { grandparent.swap(child); }, condition, "ucs/cLILocale");
  EXPECT_EQ(child.name(), cString("x"));
  EXPECT_EQ(child.parent(), &parent);
}

TEST(cLILocale, LoadingReplacesAllOfTheLanguage)
{
  cLILocale parent(nullptr);
  cLILocale locale("debug");
  locale.link(&parent);
  load(locale, "Name = \"x\"; Flag = \"y\"; \"a\" = \"1\"");
  load(locale, "\"b\" = \"2\"");
  EXPECT_TRUE(locale.name().empty());
  EXPECT_TRUE(locale.flag().empty());
  EXPECT_EQ(found(locale, "a"), "(none)");
  EXPECT_EQ(found(locale, "b"), "2");
  EXPECT_STREQ(locale.debugName().c_str(), "debug");
  EXPECT_EQ(locale.parent(), &parent);
}

TEST(cLILocale, AFailedLoadingLeavesTheLocaleAsItWas)
{
  cLILocale parent(nullptr);
  cLILocale locale(nullptr);
  locale.link(&parent);
  load(locale, "Name = \"x\"; Flag = \"y\"; \"a\" = \"1\"");
  cFilesInMemory files{{"other.locale", "Name = \"z\"; Flag = \"z\"; \"a\" = \"2\"; \"b\" = \"2\"; \"c"}};
  for (char const* name : {"other.locale", "missing.locale"})
  {
    EXPECT_NE(support::failureText([&] { locale.loadFromFile(name, files); }), "");
    EXPECT_EQ(locale.name(), cString("x"));
    EXPECT_EQ(locale.flag(), cString("dir/y"));
    EXPECT_EQ(locale.fileName(), cString("dir/de.locale"));
    EXPECT_EQ(found(locale, "a"), "1");
    EXPECT_EQ(found(locale, "b"), "(none)");
    EXPECT_EQ(locale.parent(), &parent);
  }
}

// --- the file --------------------------------------------------------------------------------------------------------

TEST(cLILocale, AFileHoldsNameFlagAndTranslations)
{
  cLILocale locale(nullptr);
  load(locale, "// German\n"
               "Name = \"Deutsch (\xC3\x96sterreich)\";\r\n"
               "Flag=\"flags/at.png\"\n"
               "\"Yes\" = \"Ja\";\"No\" = \"Nein\" // short\n"
               "\"Open %file%\" = \"%file% \xC3\xB6"
               "ffnen\"");
  EXPECT_EQ(utf8(locale.name()), "Deutsch (\xC3\x96sterreich)");
  EXPECT_EQ(utf8(locale.flag()), "dir/flags/at.png");
  EXPECT_EQ(locale.fileName(), cString("dir/de.locale"));
  EXPECT_EQ(found(locale, "Yes"), "Ja");
  EXPECT_EQ(found(locale, "No"), "Nein");
  EXPECT_EQ(utf8(locale.translate(cLIMessage() << "$MTR$Open %file%"
                                               << "a.txt")),
            "a.txt \xC3\xB6"
            "ffnen");
}

TEST(cLILocale, AFileMayBeEmpty)
{
  cLILocale locale(nullptr);
  load(locale, "");
  EXPECT_EQ(locale.fileName(), cString("dir/de.locale"));
  EXPECT_EQ(locale.translator().length(), 0u);
}

TEST(cLILocale, TheLastNameAndFlagCountAndTheFirstTranslation)
{
  cLILocale locale(nullptr);
  load(locale, "Name=\"1\" Flag=\"1\" \"a\"=\"1\" Name=\"2\" Flag=\"2\" \"a\"=\"2\"");
  EXPECT_EQ(locale.name(), cString("2"));
  EXPECT_EQ(locale.flag(), cString("dir/2"));
  EXPECT_EQ(found(locale, "a"), "1");
}

TEST(cLILocale, AnEmptyValueReplacesAnother)
{
  cLILocale locale(nullptr);
  load(locale, "Name = \"x\" Name = \"\"");
  EXPECT_TRUE(locale.name().empty());
}

TEST(cLILocale, TokensThatMeanNothingArePassedOver)
{
  cLILocale locale(nullptr);
  load(locale, "what = ( ) ever fromFile ;;; \"a\" = \"1\" rest");
  EXPECT_EQ(found(locale, "a"), "1");
}

TEST(cLILocale, AFlagStandsBesideTheFile)
{
  cFilesInMemory files{{"de.locale", "Flag = \"de.png\""},
                       {"/abs/x/de.locale", "Flag = \"../de.png\""},
                       {"abs.locale", "Flag = \"/pictures/de.png\""}};
  cLILocale locale(nullptr);
  locale.loadFromFile("de.locale", files);
  EXPECT_EQ(locale.flag(), cString("de.png"));
  locale.loadFromFile("/abs/x/de.locale", files);
  EXPECT_EQ(locale.flag(), cString("/abs/x/../de.png"));
  locale.loadFromFile("abs.locale", files);
  EXPECT_EQ(locale.flag(), cString("/pictures/de.png"));
}

TEST(cLILocale, IncludedFilesAreRelativeToTheFileInWhichTheyStand)
{
  cFilesInMemory files{{"a/top.locale", "include \"b/middle.locale\" \"key\" = \"top\" include \"/root.locale\""},
                       {"a/b/middle.locale", "include \"../c/last.locale\"; Flag = \"m.png\"; \"key\" = \"middle\""},
                       {"a/b/../c/last.locale", "Name = \"last\"; \"last\" = fromFile(\"long.txt\")"},
                       {"a/b/../c/long.txt", "a long text"},
                       {"/root.locale", "\"root\" = \"r\""}};
  cLILocale locale(nullptr);
  locale.loadFromFile("a/top.locale", files);
  EXPECT_EQ(locale.name(), cString("last"));
  EXPECT_EQ(locale.flag(), cString("a/b/m.png"));
  EXPECT_EQ(locale.fileName(), cString("a/top.locale"));
  EXPECT_EQ(found(locale, "key"), "middle");
  EXPECT_EQ(found(locale, "last"), "a long text");
  EXPECT_EQ(found(locale, "root"), "r");
}

TEST(cLILocale, AValueMayComeFromAFile)
{
  cFilesInMemory files{{"d/de.locale", "\"a\" = fromFile(\"a.txt\"); Name = fromFile ( \"name.txt\" ) // c\n"
                                       "Flag = fromFile(\"flag.txt\") include fromFile(\"include.txt\")"},
                       {"d/a.txt", "Ein \"langer\" \\ Text;\n// \xC3\xBC\n"},
                       {"d/name.txt", "Deutsch"},
                       {"d/flag.txt", "de.png"},
                       {"d/include.txt", "more.locale"},
                       {"d/more.locale", "\"b\" = fromFile(\"empty.txt\")"},
                       {"d/empty.txt", ""}};
  cLILocale locale(nullptr);
  locale.loadFromFile("d/de.locale", files);
  ASSERT_NE(locale.translator().hasTranslation("a"), nullptr);
  EXPECT_EQ(utf8(locale.translator().hasTranslation("a")->translation()),
            "Ein \"langer\" \\ Text;\n// \xC3\xBC\n"); // as it stands
  EXPECT_EQ(locale.name(), cString("Deutsch"));
  EXPECT_EQ(locale.flag(), cString("d/de.png"));
  EXPECT_EQ(found(locale, "b"), "");
}

TEST(cLILocale, FromFileIsAWordAndStandsForAValueOnly)
{
  cLILocale locale(nullptr);
  load(locale, "\"a\" = \"fromFile\"");
  EXPECT_EQ(found(locale, "a"), "fromFile");
  EXPECT_EQ(refused("\"a\" = fromFiles(\"x\")"), runtime + "\" expected!");
  EXPECT_EQ(refused("\"a\" = fromfile(\"x\")"), runtime + "\" expected!");
}

TEST(cLILocale, EscapedQuotesStayInAString)
{
  cLILocale locale(nullptr);
  load(locale, "Name = \"\\\"D\\\\E\\\"\" \"a \\\"b\\\"\" = \"c\"");
  EXPECT_EQ(locale.name(), cString("\"D\\E\""));
  EXPECT_EQ(found(locale, "a \"b\""), "c");
}

TEST(cLILocale, AMissingQuote)
{
  for (char const* content :
       {"Name =", "Name = x", "Name = (", "Name = \"x", "Name = \"", "Flag = ;", "Flag = \"x\\\"", "include x",
        "include", "include \"x", "include = \"x\"", "\"a\" = b\"", "\"a\" = \"b", "\"a", "\"", "\"a\" = fromFile(x)",
        "\"a\" = fromFile(\"x", "\"a\" = fromFile(", "\"a\" = Name"})
  {
    EXPECT_EQ(refused(content), runtime + "\" expected!") << content;
  }
}

TEST(cLILocale, AMissingEqualsSign)
{
  for (char const* content : {"Name", "Name \"x\"", "Flag \"x\"", "Flag", "\"a\"", "\"a\" \"b\"", "\"a\" b",
                              "Name // = \"x\"", "\"a\" (\"b\")"})
  {
    EXPECT_EQ(refused(content), runtime + "\"=\" expected!") << content;
  }
}

TEST(cLILocale, AMissingParenthesis)
{
  for (char const* content : {"\"a\" = fromFile", "\"a\" = fromFile \"x\"", "\"a\" = fromFile)", "\"a\" = fromFile x"})
  {
    EXPECT_EQ(refused(content), runtime + "\"(\" expected!") << content;
  }
  for (char const* content : {"\"a\" = fromFile(\"x\"", "\"a\" = fromFile(\"x\" \"y\")", "\"a\" = fromFile(\"x\"("})
  {
    EXPECT_EQ(refused(content), runtime + "\")\" expected!") << content;
  }
}

TEST(cLILocale, AnEmptyFileName)
{
  EXPECT_EQ(refused("\"a\" = fromFile(\"\")"), runtime + "Filename expected!");
  EXPECT_EQ(refused("include \"\""), runtime + "Filename expected!");
}

TEST(cLILocale, AMissingFileRaisesWhatTheSourceRaises)
{
  EXPECT_EQ(refused("include \"x\""), runtime + "There is no dir/x!");
  EXPECT_EQ(refused("Name = fromFile(\"x\")"), runtime + "There is no dir/x!");
}

// --- nesting ---------------------------------------------------------------------------------------------------------

/// Files "0" to "iLevels", each of which includes the next one, and the last of which has the key "a".
cFilesInMemory nested(unsigned int iLevels)
{
  cFilesInMemory files;
  for (unsigned int i = 0; i < iLevels; ++i)
  {
    files.files[std::to_string(i)] = "include \"" + std::to_string(i + 1) + "\"";
  }
  files.files[std::to_string(iLevels)] = "\"a\" = \"1\"";
  return files;
}

TEST(cLILocale, TenNestedIncludesLoad)
{
  cFilesInMemory files = nested(10);
  cLILocale locale(nullptr);
  locale.loadFromFile("0", files);
  EXPECT_EQ(found(locale, "a"), "1");
}

TEST(cLILocale, ElevenNestedIncludesFailAndLeaveTheLocaleAsItWas)
{
  cFilesInMemory files = nested(11);
  cLILocale locale(nullptr);
  load(locale, "\"b\" = \"2\"");
  EXPECT_EQ(support::failureText([&] { locale.loadFromFile("0", files); }),
            runtime + "Maximum include depth exceeded!");
  EXPECT_EQ(files.asked.size(), 11u); // the last one is not even opened
  EXPECT_EQ(found(locale, "a"), "(none)");
  EXPECT_EQ(found(locale, "b"), "2");
  EXPECT_EQ(locale.fileName(), cString("dir/de.locale"));
}

TEST(cLILocale, TheDepthGoesDownWhenAFileIsLeft)
{
  cFilesInMemory files = nested(10);
  files.files["top"] = "include \"1\" include \"1\" include \"1\"";
  cLILocale locale(nullptr);
  locale.loadFromFile("top", files);
  EXPECT_EQ(found(locale, "a"), "1");
}

TEST(cLILocale, FilesThatIncludeOneAnotherAreTooDeep)
{
  cFilesInMemory files{{"a", "include \"b\""}, {"b", "include \"a\""}, {"c", "include \"c\" include \"c\""}};
  cLILocale locale(nullptr);
  EXPECT_EQ(support::failureText([&] { locale.loadFromFile("a", files); }),
            runtime + "Maximum include depth exceeded!");
  EXPECT_EQ(support::failureText([&] { locale.loadFromFile("c", files); }),
            runtime + "Maximum include depth exceeded!");
  EXPECT_EQ(files.asked.size(), 22u);
}

TEST(cLILocale, TheNumberOfFilesOfOneLoadingIsLimited)
{
  // Each file includes the next one ten times: all of them would be 10^10.
  cFilesInMemory files;
  for (unsigned int i = 0; i < 10; ++i)
  {
    std::string content;
    for (unsigned int j = 0; j < 10; ++j)
    {
      content += "include \"" + std::to_string(i + 1) + "\"\n";
    }
    files.files[std::to_string(i)] = content;
  }
  files.files["10"] = "\"a\" = \"1\"";
  cLILocale locale(nullptr);
  EXPECT_EQ(support::failureText([&] { locale.loadFromFile("0", files); }),
            runtime + "More than 4096 files for one locale!");
  EXPECT_EQ(files.asked.size(), 4097u); // the top one does not count

  std::string content;
  for (unsigned int i = 0; i < 4096; ++i)
  {
    content += "Name = fromFile(\"n\") ";
  }
  files.files = {{"0", content}, {"n", "x"}};
  locale.loadFromFile("0", files);
  EXPECT_EQ(locale.name(), cString("x"));
  files.files["0"] += "include \"n\"";
  EXPECT_EQ(support::failureText([&] { locale.loadFromFile("0", files); }),
            runtime + "More than 4096 files for one locale!");
}

// --- on disk ---------------------------------------------------------------------------------------------------------

TEST(cLILocale, LoadsFilesOfTheSystem)
{
  support::cTempDir dir;
  std::ofstream(dir.path() + "/de.locale") << "Name = \"Deutsch\"; Flag = \"de.png\"; include \"de.tr\"\n";
  std::ofstream(dir.path() + "/de.tr") << "\"a\" = fromFile(\"a.txt\")";
  std::ofstream(dir.path() + "/a.txt") << "\xC3\xA4";
  cLILocale locale(nullptr);
  locale.loadFromFile(dir.name("de.locale"));
  EXPECT_EQ(locale.name(), cString("Deutsch"));
  EXPECT_EQ(locale.flag(), dir.name("de.png"));
  EXPECT_EQ(locale.fileName(), dir.name("de.locale"));
  EXPECT_EQ(found(locale, "a"), "\xC3\xA4");
}

TEST(cLILocale, AFileThatTheSystemDoesNotHaveIsToldAsTheFileSystemTellsIt)
{
  support::cTempDir dir;
  cLILocale locale(nullptr);
  EXPECT_EQ(support::failureText([&] { locale.loadFromFile(dir.name("x")); }),
            runtime + "Unable to open file \"" + support::ascii(dir.name("x")) + "\"!");
  EXPECT_NE(support::failureText([&] { locale.loadFromFile(dir.name("")); }), ""); // a directory
}

} // namespace
