#include "std/tParentWatch.h"

#include "support/expectFailure.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <random>
#include <string>
#include <vector>

using mstd::tParentWatch;

namespace
{

class cThing
{
public:
  explicit cThing(std::string const& sName) : name(sName), watch(this) {}
  std::string const name;
  tParentWatch<cThing> watch;
};

std::string children(cThing const& thing)
{
  std::string result;
  for (tParentWatch<cThing>* child : thing.watch.children())
  {
    result += child->object().name;
  }
  return result;
}

} // namespace

TEST(tParentWatch, ANewWatchIsARootWithoutChildren)
{
  cThing a("a");
  EXPECT_EQ(&a.watch.object(), &a);
  EXPECT_EQ(a.watch.parent(), nullptr);
  EXPECT_TRUE(a.watch.children().empty());
}

TEST(tParentWatch, ReadingAnObjectThatIsNotThereIsABug)
{
  tParentWatch<cThing> watch(nullptr);
  support::expectAssertion([&] { watch.object(); }, "mpObject != 0", "std/tParentWatch");
}

TEST(tParentWatch, AChildIsAddedBehindTheOthers)
{
  cThing top("t"), a("a"), b("b"), c("c");
  a.watch.setParent(&top.watch);
  top.watch.addChild(b.watch);
  c.watch.setParent(&top.watch);
  EXPECT_EQ(children(top), "abc");
  EXPECT_EQ(a.watch.parent(), &top.watch);
}

TEST(tParentWatch, ANewParentTakesTheChildFromTheOldOne)
{
  cThing top("t"), other("o"), a("a"), b("b");
  a.watch.setParent(&top.watch);
  b.watch.setParent(&top.watch);
  a.watch.setParent(&other.watch);
  EXPECT_EQ(children(top), "b");
  EXPECT_EQ(children(other), "a");
  a.watch.setParent(nullptr);
  EXPECT_EQ(children(other), "");
  EXPECT_EQ(a.watch.parent(), nullptr);
  a.watch.setParent(nullptr);
}

TEST(tParentWatch, TheSameParentAgainPutsTheChildLast)
{
  cThing top("t"), a("a"), b("b");
  a.watch.setParent(&top.watch);
  b.watch.setParent(&top.watch);
  a.watch.setParent(&top.watch);
  EXPECT_EQ(children(top), "ba");
}

TEST(tParentWatch, ItselfAsTheParentChangesNothing)
{
  cThing top("t"), a("a");
  a.watch.setParent(&top.watch);
  a.watch.setParent(&a.watch);
  EXPECT_EQ(a.watch.parent(), &top.watch);
  EXPECT_EQ(children(top), "a");
}

TEST(tParentWatch, DeletingAMiddleWatchLeavesTheGrandchildrenAsTheLastChildrenOfTheTop)
{
  cThing top("t"), first("1"), last("2"), g("g"), h("h");
  std::unique_ptr<cThing> middle(new cThing("m"));
  first.watch.setParent(&top.watch);
  middle->watch.setParent(&top.watch);
  last.watch.setParent(&top.watch);
  g.watch.setParent(&middle->watch);
  h.watch.setParent(&middle->watch);
  middle.reset();
  EXPECT_EQ(children(top), "12gh");
  EXPECT_EQ(g.watch.parent(), &top.watch);
  EXPECT_EQ(h.watch.parent(), &top.watch);
  g.watch.setParent(nullptr);
  EXPECT_EQ(children(top), "12h");
}

TEST(tParentWatch, DeletingARootMakesItsChildrenRoots)
{
  cThing a("a"), b("b");
  {
    cThing top("t");
    a.watch.setParent(&top.watch);
    b.watch.setParent(&top.watch);
  }
  EXPECT_EQ(a.watch.parent(), nullptr);
  EXPECT_EQ(b.watch.parent(), nullptr);
  a.watch.setParent(&b.watch);
  EXPECT_EQ(children(b), "a");
}

TEST(tParentWatch, UnlinkingTwiceIsHarmless)
{
  cThing top("t"), middle("m"), a("a");
  middle.watch.setParent(&top.watch);
  a.watch.setParent(&middle.watch);
  middle.watch.unlinkAndReparentChildren();
  middle.watch.unlinkAndReparentChildren();
  EXPECT_EQ(children(top), "a");
  EXPECT_EQ(middle.watch.parent(), nullptr);
  EXPECT_TRUE(middle.watch.children().empty());
}

TEST(tParentWatch, ARingOfTwoComesApartInEitherOrder)
{
  for (bool const firstGoes : {true, false})
  {
    std::unique_ptr<cThing> a(new cThing("a"));
    std::unique_ptr<cThing> b(new cThing("b"));
    cThing c("c");
    a->watch.setParent(&b->watch);
    b->watch.setParent(&a->watch);
    c.watch.setParent(&a->watch);
    (firstGoes ? a : b).reset();
    cThing& rest = firstGoes ? *b : *a;
    EXPECT_EQ(rest.watch.parent(), nullptr);
    EXPECT_EQ(children(rest), "c");
    EXPECT_EQ(c.watch.parent(), &rest.watch);
    a.reset();
    b.reset();
    EXPECT_EQ(c.watch.parent(), nullptr);
  }
}

TEST(tParentWatch, ALongerRingShrinks)
{
  std::unique_ptr<cThing> a(new cThing("a"));
  cThing b("b"), c("c");
  a->watch.setParent(&b.watch);
  b.watch.setParent(&c.watch);
  c.watch.setParent(&a->watch);
  a.reset();
  EXPECT_EQ(c.watch.parent(), &b.watch);
  EXPECT_EQ(b.watch.parent(), &c.watch);
  EXPECT_EQ(children(b), "c");
  EXPECT_EQ(children(c), "b");
}

TEST(tParentWatch, RandomTreesAgreeWithAPlainModel)
{
  unsigned int const seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::cout << "seed " << seed << "\n";
  std::mt19937 random(seed);
  int const count = 12;
  struct cModel
  {
    int parent;
    std::vector<int> children;
  };
  std::vector<std::unique_ptr<cThing>> things;
  std::vector<cModel> model(count, cModel{-1, {}});
  for (int i = 0; i < count; ++i)
  {
    things.emplace_back(new cThing(std::string(1, static_cast<char>('a' + i))));
  }
  auto const unlink = [&](int i) {
    if (model[i].parent >= 0)
    {
      std::vector<int>& siblings = model[model[i].parent].children;
      siblings.erase(std::find(siblings.begin(), siblings.end(), i));
      model[i].parent = -1;
    }
  };
  for (int round = 0; round < 20000; ++round)
  {
    int const a = static_cast<int>(random() % count);
    int const b = static_cast<int>(random() % count);
    switch (random() % 4)
    {
    case 0: // a goes, and a new one takes its place
    {
      things[a].reset(new cThing(things[a]->name));
      int const parent = model[a].parent;
      unlink(a);
      if (parent >= 0 && model[parent].parent == a)
      {
        unlink(parent);
      }
      for (int const child : model[a].children)
      {
        model[child].parent = parent;
        if (parent >= 0)
        {
          model[parent].children.push_back(child);
        }
      }
      model[a].children.clear();
      break;
    }
    case 1:
      things[a]->watch.setParent(nullptr);
      unlink(a);
      break;
    default: // rings included
      things[a]->watch.setParent(&things[b]->watch);
      if (a != b)
      {
        unlink(a);
        model[a].parent = b;
        model[b].children.push_back(a);
      }
      break;
    }
    for (int i = 0; i < count; ++i)
    {
      ASSERT_EQ(things[i]->watch.parent(), model[i].parent < 0 ? nullptr : &things[model[i].parent]->watch);
      std::string expected;
      for (int const child : model[i].children)
      {
        expected += things[child]->name;
      }
      ASSERT_EQ(children(*things[i]), expected);
    }
  }
}
