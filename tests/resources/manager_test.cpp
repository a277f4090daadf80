#include "resources/manager.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "norvane.h"
#include "support/files.h"
#include "support/manager.h"
#include "xml/xml.h"

using norvane::NamedResource;
using norvane::NamedResourceBank;

namespace {

std::string journal;  // what banks and resources did, in order

struct Item;

// Holds one Item per child element, keyed by its "key" attribute; throws on an element "fail".
class TestBank : public NamedResourceBank<Item> {
public:
    ~TestBank() override { journal += "~bank(" + label + ") "; }
    std::string getNodeName() override { return "tests"; }
    void getFromNode(const norvane::xml::Node* node, const std::string& directory) override;
    std::string label, dir;
};

struct Item : NamedResource<TestBank, std::string> {
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

class TestGenerator : public norvane::ResourceBankGenerator {
public:
    norvane::BasicResourceBank* generateBank(const std::string& type) const override {
        return type == "tests" ? new TestBank : nullptr;
    }
};
const TestGenerator testGenerator;

class Resources : public testing::Test {
protected:
    void SetUp() override {
        captured([] { norvane::init(0, false); });  // names the log groups
        journal.clear();
    }
    // The bank "t" of a manager that read `definition`.
    std::string dirOf(const std::string& definition, const std::string& dirArgument) {
        OwningManager manager;
        manager.load(writeFile("dirs.xml", definition), dirArgument);
        return manager.get<TestBank>("t")->dir;
    }
};

}  // namespace

TEST_F(Resources, DefinitionLoadsInDocumentOrderWithItsMessagesAndTheFirstFaultEndsIt) {
    OwningManager manager;
    EXPECT_EQ(captured([&] {
                  manager.load(writeFile("order.xml", "<resources><tests name=\"a\"><item key=\"x\"/><item key=\"y\"/></tests>"
                                                      "<sprockets name=\"b\"/><tests dir=\"nameless/\"><item key=\"lost\"/></tests>"
                                                      "<tests name=\"c\"/><Tests name=\"d\"/><tests name=\"a\"><item key=\"z\"/></tests>"
                                                      "</resources>"),
                               "");
              }),
              "[norvane:resources] (warning) Unknown resource bank type \"sprockets\".\n"
              "[norvane:resources] (error) Missing name attribute from resource bank node.\n"
              "[norvane:resources] (warning) Unknown resource bank type \"Tests\".\n");
    // The second "a" replaced the first, which took its items with it, greatest key first.
    EXPECT_EQ(journal, "read(a) read(c) ~bank(a) ~y ~x read(a) ");
    ASSERT_EQ(manager.banks.size(), 2u);
    EXPECT_TRUE(manager.get<TestBank>("a")->find("z"));
    EXPECT_EQ(manager.get<TestBank>("c")->manager, &manager);

    // Wrong roots and empty files load nothing and say nothing; broken files throw.
    EXPECT_EQ(captured([&] {
                  manager.load(writeFile("images.xml", "<images><tests name=\"t\"/></images>"), "");
                  manager.load(writeFile("empty.xml", ""), "");
              }),
              "");
    EXPECT_THROW(manager.load(writeFile("cut.xml", "<resources><tests name=\"t\">"), ""), std::string);
    EXPECT_THROW(manager.load(scratchPath("missing.xml"), ""), std::string);
    EXPECT_EQ(thrownBy([&] {
                  manager.load(writeFile("fail.xml", "<resources><tests name=\"f1\"/><tests name=\"f2\"><fail/></tests>"
                                                     "<tests name=\"f3\"/></resources>"),
                               "");
              }),
              "bank failed");
    EXPECT_EQ(manager.banks.size(), 4u);  // the banks before the fault stay listed
    EXPECT_FALSE(manager.get<TestBank>("f3"));
}

TEST_F(Resources, DirectoriesComeFromTheFileAndTheDirAttributes) {
    const std::string base = scratchPath("");
    EXPECT_EQ(dirOf("<resources><tests name=\"t\"/></resources>", ""), base);
    EXPECT_EQ(dirOf("<resources dir=\"gfx/\"><tests name=\"t\" dir=\"ships/\"/></resources>", ""), base + "gfx/ships/");
    EXPECT_EQ(dirOf("<resources><tests name=\"t\" dir=\"a\"/></resources>", "given"), "given/a");
    ASSERT_EQ(chdir(base.c_str()), 0);
    OwningManager manager;  // a file name without any directory gives an empty base
    manager.load("dirs.xml", "");
    EXPECT_EQ(manager.get<TestBank>("t")->dir, "a");
}

TEST_F(Resources, RenameMovesTheBankAndBanksDestroyTheirResourcesOnce) {
    OwningManager manager;
    manager.load(writeFile("rename.xml", "<resources><tests name=\"a\"/><tests name=\"b\"/></resources>"), "");
    TestBank* a = manager.get<TestBank>("a");
    TestBank* b = manager.get<TestBank>("b");
    manager.rename("a", "first");
    EXPECT_EQ(thrownBy([&] { manager.rename("a", "again"); }), "Resource \"a\" not found.");
    manager.rename("first", "b");  // overwrites the entry without destroying that bank
    EXPECT_EQ(manager.get<TestBank>("b"), a);
    EXPECT_EQ(manager.banks.size(), 1u);
    EXPECT_EQ(journal.find("~bank"), std::string::npos);
    delete b;

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

class CountingBank : public norvane::RefreshingBank {
public:
    explicit CountingBank(int elements) : elements(elements) {}
    int size() const override { return elements; }
    void refresh(norvane::RefreshingBankHandler* handler) override {
        for (int i = 0; i < elements; ++i) handler->elementRefreshed();
    }
    int elements;
};

class Progress : public norvane::ResourceLoaderHandler {
public:
    void onLoadingFinished() override { events += "finished"; }
    void onLoadingProgress(norvane::RefreshingBank* bank, int done, int total) override {
        events += (bank == nullptr ? std::string("-") : bank == first ? "1" : "2") + ":" + std::to_string(done) +
                  "/" + std::to_string(total) + " ";
    }
    const norvane::RefreshingBank* first = nullptr;
    std::string events;
};

}  // namespace

TEST(ResourceLoader, RefreshesBanksInOrderAndReportsEachElement) {
    CountingBank one(2), two(3);
    Progress progress;
    progress.first = &one;
    auto* loader = new norvane::ResourceLoader(&progress);  // deletes itself when done
    *loader += &one;
    *loader += &two;
    loader->start();
    EXPECT_EQ(progress.events, "-:0/5 1:1/5 1:2/5 2:3/5 2:4/5 2:5/5 finished");
}
