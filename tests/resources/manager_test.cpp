#include "resources/manager.h"

#include <gtest/gtest.h>

#include "norvane.h"
#include "support/files.h"
#include "support/manager.h"
#include "xml/xml.h"

namespace {

std::string journal;  // what banks and resources did, in order

struct Item;

// Holds one Item per child element, keyed by its "key" attribute; throws on an element "fail".
struct TestBank : norvane::NamedResourceBank<Item> {
    ~TestBank() override { journal += "~bank(" + label + ") "; }
    std::string getNodeName() override { return "tests"; }
    void getFromNode(const norvane::xml::Node* node, const std::string& directory) override;
    std::string label, dir;
};

struct Item : norvane::NamedResource<TestBank, std::string> {
    ~Item() override { journal += "~" + name + " "; }
};

void TestBank::getFromNode(const norvane::xml::Node* node, const std::string& directory) {
    label = node->getAttribute("name", std::string("-"));
    dir = directory;
    journal += "read(" + label + ") ";
    for (const norvane::xml::Node* child : node->children) {
        if (child->name == "fail") throw std::string("bank failed");
        add(child->getAttribute("key", std::string()), new Item);
    }
}

struct TestGenerator : norvane::ResourceBankGenerator {
    norvane::BasicResourceBank* generateBank(const std::string& type) const override {
        return type == "tests" ? new TestBank : nullptr;
    }
} const testGenerator;

class Resources : public testing::Test {
protected:
    void SetUp() override {
        captured([] { norvane::init(0, false); });  // names the log groups
        journal.clear();
    }
};

}  // namespace

TEST_F(Resources, DefinitionLoadsInDocumentOrderTheFirstFaultEndsItAndBanksDestroyTheirResourcesOnce) {
    OwningManager manager;
    EXPECT_EQ(captured([&] {
                  manager.load(writeFile("order.xml", "<resources dir='gfx/'><tests name='a'><item key='x'/><item key='y'/>"
                                                      "</tests><sprockets name='b'/><tests dir='nameless/'><item key='lost'/>"
                                                      "</tests><tests name='c' dir='ships/'/><tests name='a'><item key='z'/>"
                                                      "</tests></resources>"),
                               "");
              }),
              "[norvane:resources] (warning) Unknown resource bank type \"sprockets\".\n"
              "[norvane:resources] (error) Missing name attribute from resource bank node.\n");
    // The second "a" replaced the first, which took its items with it, greatest key first.
    EXPECT_EQ(journal, "read(a) read(c) ~bank(a) ~y ~x read(a) ");
    ASSERT_EQ(manager.banks.size(), 2u);
    EXPECT_TRUE(manager.get<TestBank>("a")->find("z"));
    EXPECT_EQ(manager.get<TestBank>("c")->manager, &manager);
    manager.rename("c", "d");
    EXPECT_EQ(thrownBy([&] { manager.rename("c", "e"); }), "Resource \"c\" not found.");
    EXPECT_EQ(manager.get<TestBank>("d")->label, "c");
    // The directory is the file's, or the one given, with the "dir" attributes of the root and bank.
    EXPECT_EQ(manager.get<TestBank>("d")->dir, scratchPath("gfx/ships/"));
    manager.load(writeFile("given.xml", "<resources><tests name='g' dir='a'/></resources>"), "given");
    EXPECT_EQ(manager.get<TestBank>("g")->dir, "given/a");

    // Wrong roots and empty files load nothing; broken files throw.
    manager.load(writeFile("images.xml", "<images><tests name='t'/></images>"), "");
    manager.load(writeFile("empty.xml", ""), "");
    EXPECT_THROW(manager.load(writeFile("cut.xml", "<resources><tests name='t'>"), ""), std::string);
    EXPECT_EQ(thrownBy([&] {
                  manager.load(writeFile("fail.xml", "<resources><tests name='f1'/><tests name='f2'><fail/></tests>"
                                                     "<tests name='f3'/></resources>"),
                               "");
              }),
              "bank failed");
    EXPECT_EQ(manager.banks.size(), 5u);  // the banks before the fault stay listed
    EXPECT_FALSE(manager.get<TestBank>("t") || manager.get<TestBank>("f3"));

    journal.clear();
    {
        TestBank bank;
        bank.label = "owner";
        for (const char* key : {"m", "a", "z", "s"}) bank.add(key, new Item);
        bank.resources["ghost"];  // an empty entry, as a lookup with operator[] leaves it
        bank.add("a", new Item);  // replacing an entry destroys the old resource
        EXPECT_EQ(journal, "~a ");
        delete bank.find("m");  // a resource destroyed on its own leaves its bank
        EXPECT_EQ(bank.find("m"), nullptr);
        bank.find("z")->name = "a";  // renamed behind its bank's back: still destroyed once
        journal.clear();
    }
    EXPECT_EQ(journal, "~bank(owner) ~z ~s ~a ");
}

namespace {

// A bank of `elements` elements that notes the progress the loader reports.
struct CountingBank : norvane::RefreshingBank, norvane::ResourceLoaderHandler {
    explicit CountingBank(int elements) : elements(elements) {}
    int size() const override { return elements; }
    void refresh(norvane::RefreshingBankHandler* handler) override {
        for (int i = 0; i < elements; ++i) handler->elementRefreshed();
    }
    void onLoadingFinished() override { events += "finished"; }
    void onLoadingProgress(norvane::RefreshingBank* bank, int done, int total) override {
        events += std::to_string(bank ? static_cast<CountingBank*>(bank)->elements : 0) + ":" + std::to_string(done) +
                  "/" + std::to_string(total) + " ";
    }
    int elements;
    std::string events;
};

}  // namespace

TEST(ResourceLoader, RefreshesBanksInOrderAndReportsEachElement) {
    CountingBank two(2), three(3);
    auto* loader = new norvane::ResourceLoader(&two);  // deletes itself when done
    *loader += &two;
    *loader += &three;
    loader->start();
    EXPECT_EQ(two.events, "0:0/5 2:1/5 2:2/5 3:3/5 3:4/5 3:5/5 finished");
}
