#include "mcs/componentGraph.h"

#include "mcs/cInterfaceDep.h"
#include "support/cCaptureOut.h"
#include "support/cTempDir.h"
#include "support/cTestComponent.h"
#include "support/exceptionText.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <regex>
#include <sstream>

using mcs::cComponentAddr;
using mcs::cInterfaceDep;
using support::cTestComponent;

namespace
{
class componentGraphTest : public ::testing::Test
{
protected:
  std::string graph() const { return support::toString(mcs::componentGraph(mManager)); }
  static std::string id(char const* prefix, void const* pObject)
  {
    std::ostringstream out;
    out << '"' << prefix << std::hex << reinterpret_cast<piAddress>(pObject) << '"';
    return out.str();
  }
  static void expectPart(std::string const& whole, std::string const& part)
  {
    EXPECT_NE(whole.find(part), std::string::npos) << part << "\nis not in\n" << whole;
  }

  support::cCaptureOut mOut;
  mcs::cModuleMgr mManager{mpi::system().extensions};
  support::cPasses mPasses;
};
} // namespace

TEST_F(componentGraphTest, AnEmptyManagerIsAnEmptyGraph)
{
  EXPECT_EQ(graph(), "digraph G {\n}\n");
}

TEST_F(componentGraphTest, ShowsTheStateOfEachComponent)
{
  cTestComponent a(mManager, "a");
  mManager.addComponent(a, cComponentAddr());
  std::string const start = id("c", &a) + " [ label=\"a (1:2)\\n" + support::toString(a.location().toString());
  expectPart(graph(),
             start + "\\nnot announced\",shape=\"box\",style=\"filled\",color=\"black\",fillcolor=\"white\" ]");
  mPasses.settle();
  expectPart(graph(), start + "\\nannounced\",shape=\"box\",style=\"filled\",color=\"black\","
                              "fillcolor=\"LightSteelBlue\" ]");
  a.removeLater();
  expectPart(graph(), start + "\\nto be removed\",shape=\"box\",style=\"filled\",color=\"black\","
                              "fillcolor=\"salmon\" ]");
}

TEST_F(componentGraphTest, ShowsInterfacesMatchesMissesAndRequirements)
{
  cTestComponent provider(mManager, "provider");
  support::cTestInterface interface("x");
  provider.addInterface(interface);
  cTestComponent user(mManager, "user");
  mManager.addComponent(provider, cComponentAddr());
  mManager.addComponent(user, cComponentAddr());
  cInterfaceDep matched(user, support::wantedInterface("x"), nullptr, cInterfaceDep::saUseFirstBest);
  cInterfaceDep missed(user, support::wantedInterface("y"), nullptr, cInterfaceDep::saUseFirstBest);
  user.addLocalRequiredComponent(&provider);
  cTestComponent absent(mManager, "absent");
  user.addLocalRequiredComponent(&absent);
  mPasses.settle();
  std::string const text = graph();
  expectPart(text, id("i", &interface) + " [ label=\"x\",shape=\"ellipse\" ];\n");
  expectPart(text, id("c", &provider) + " -> " + id("i", &interface) + " [ label=\"\",dir=\"none\" ];\n");
  expectPart(text, id("c", &user) + " -> " + id("i", &interface) + " [ label=\"x\",color=\"blue\" ];\n");
  expectPart(text, id("d", &missed) + " [ label=\"y\",shape=\"note\",color=\"red\" ];\n");
  expectPart(text, id("c", &user) + " -> " + id("d", &missed) + " [ label=\"\",color=\"red\",style=\"dashed\" ];\n");
  expectPart(text, id("c", &user) + " -> " + id("c", &provider) + " [ label=\"requires\",style=\"bold\" ];\n");
  EXPECT_EQ(text.find(id("c", &absent)), std::string::npos);
  EXPECT_EQ(text.find("absent"), std::string::npos);
}

TEST_F(componentGraphTest, NamesMayHoldAnything)
{
  cTestComponent a(mManager, "\"];\\\n\x01 <b> {|} \x7f\xc3\xa4");
  support::cTestInterface interface("x\"\\");
  a.addInterface(interface);
  mManager.addComponent(a, cComponentAddr());
  cInterfaceDep missed(a, support::wantedInterface("\"\r"), nullptr, cInterfaceDep::saUseFirstBest);
  std::string const text = graph();
  expectPart(text, "label=\"\\\"];\\\\   <b> {|}  \xc3\xa4 (1:2)\\n");
  expectPart(text, "label=\"x\\\"\\\\\"");
  expectPart(text, "label=\"\\\" \"");

  if (std::system("command -v dot > /dev/null 2>&1") != 0)
  {
    GTEST_SKIP() << "Graphviz is not installed: the text alone was looked at";
  }
  support::cTempDir directory;
  std::string const file = directory.path() + "/graph.dot";
  std::ofstream(file) << text;
  EXPECT_EQ(std::system(("dot -Tsvg -o " + file + ".svg " + file).c_str()), 0);
  std::ifstream svg(file + ".svg");
  std::string const picture((std::istreambuf_iterator<char>(svg)), std::istreambuf_iterator<char>());
  EXPECT_NE(picture.find("</svg>"), std::string::npos);
}
