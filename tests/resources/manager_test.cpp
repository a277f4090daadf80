#include "resources/manager.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>

#include "files/sysdirs.h"
#include "norvane.h"
#include "xml/xml.h"

using norvane::BasicResourceBank;
using norvane::NamedResource;
using norvane::NamedResourceBank;
using norvane::ResourceManager;

namespace {

std::string journal;  // what banks and resources did, in order

struct Item;

// Holds one Item per child element, keyed by its "key" attribute; throws on an element "fail".
class TestBank : public NamedResourceBank<Item> {
public:
    ~TestBank() override;
    std::string getNodeName() override { return "tests"; }
    void getFromNode(const norvane::xml::Node* node, const std::string& dir) override;

    std::string label;
    std::string dir;
};

struct Item : NamedResource<TestBank, std::string> {
    ~Item() override { journal += "~" + name + " "; }
};

TestBank::~TestBank() { journal += "~bank(" + label + ") "; }

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
    BasicResourceBank* generateBank(const std::string& type) const override {
        return type == "tests" ? new TestBank : nullptr;
    }
};
const TestGenerator testGenerator;

// The manager forgets its banks without destroying them; the tests clean up after it.
struct OwningManager : ResourceManager {
    ~OwningManager() override {
        for (auto& entry : banks) delete entry.second;
    }
    TestBank* bank(const std::string& name) {
        auto it = banks.find(name);
        return it == banks.end() ? nullptr : dynamic_cast<TestBank*>(it->second);
    }
};

std::string writeFile(const std::string& name, const std::string& content) {
    const std::string path = std::string(TEST_TMP_DIR) + "/resources/" + name;
    norvane::mkdirs(path);
    std::ofstream(path, std::ios::binary) << content;
    return path;
}

class ResourceManagerTest : public testing::Test {
protected:
    void SetUp() override {
        testing::internal::CaptureStdout();
        norvane::init(0, false);  // names the log groups
        testing::internal::GetCapturedStdout();
        journal.clear();
    }
};

}  // namespace

TEST_F(ResourceManagerTest, DefinitionLoadsInDocumentOrderWithItsMessages) {
    const std::string file = writeFile("order.xml",
                                       "<resources>"
                                       "  <tests name=\"a\"><item key=\"x\"/><item key=\"y\"/></tests>"
                                       "  <sprockets name=\"b\"/>"
                                       "  <tests dir=\"nameless/\"><item key=\"lost\"/></tests>"
                                       "  <tests name=\"c\"/>"
                                       "  <Tests name=\"d\"/>"
                                       "  <tests name=\"a\"><item key=\"z\"/></tests>"
                                       "</resources>");
    OwningManager manager;
    testing::internal::CaptureStdout();
    manager.load(file, "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "[norvane:resources] (warning) Unknown resource bank type \"sprockets\".\n"
              "[norvane:resources] (error) Missing name attribute from resource bank node.\n"
              "[norvane:resources] (warning) Unknown resource bank type \"Tests\".\n");
    // The second "a" replaced the first, which took its items with it, greatest key first.
    EXPECT_EQ(journal, "read(a) read(c) ~bank(a) ~y ~x read(a) ");
    ASSERT_EQ(manager.banks.size(), 2u);
    ASSERT_TRUE(manager.bank("a"));
    EXPECT_EQ(manager.bank("a")->size(), 1);
    EXPECT_TRUE(manager.bank("a")->find("z"));
    EXPECT_EQ(manager.bank("a")->manager, &manager);
    EXPECT_EQ(manager.bank("c")->manager, &manager);
}

TEST_F(ResourceManagerTest, DirectoriesComeFromTheFileAndTheDirAttributes) {
    struct Case {
        std::string root, dirArgument, expected;
    };
    const std::string base = std::string(TEST_TMP_DIR) + "/resources/";
    const Case cases[] = {
        {"<resources><tests name=\"t\"/></resources>", "", base},
        {"<resources dir=\"gfx/\"><tests name=\"t\"/></resources>", "", base + "gfx/"},
        {"<resources dir=\"gfx/\"><tests name=\"t\" dir=\"ships/\"/></resources>", "", base + "gfx/ships/"},
        {"<resources><tests name=\"t\" dir=\"a\"/></resources>", "given", "given/a"},
        {"<resources><tests name=\"t\"/></resources>", "given/", "given/"},
    };
    for (const Case& c : cases) {
        const std::string file = writeFile("dirs.xml", c.root);
        OwningManager manager;
        manager.load(file, c.dirArgument);
        ASSERT_TRUE(manager.bank("t"));
        EXPECT_EQ(manager.bank("t")->dir, c.expected) << c.root;
    }

    // A file name without any directory gives an empty base.
    const std::string file = writeFile("plain.xml", "<resources><tests name=\"t\" dir=\"sub/\"/></resources>");
    ASSERT_EQ(chdir((std::string(TEST_TMP_DIR) + "/resources").c_str()), 0);
    OwningManager manager;
    manager.load("plain.xml", "");
    EXPECT_EQ(manager.bank("t")->dir, "sub/");
}

TEST_F(ResourceManagerTest, WrongRootsAndBrokenFiles) {
    OwningManager manager;
    testing::internal::CaptureStdout();
    manager.load(writeFile("images.xml", "<images><tests name=\"t\"/></images>"), "");
    manager.load(writeFile("empty.xml", ""), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_TRUE(manager.banks.empty());

    EXPECT_THROW(manager.load(writeFile("cut.xml", "<resources><tests name=\"t\">"), ""), std::string);
    EXPECT_THROW(manager.load(std::string(TEST_TMP_DIR) + "/resources/missing.xml", ""), std::string);

    // A bank's exception ends the load; the banks before it stay listed.
    const std::string file = writeFile("fail.xml",
                                       "<resources><tests name=\"a\"/><tests name=\"b\"><fail/></tests>"
                                       "<tests name=\"c\"/></resources>");
    try {
        manager.load(file, "");
        FAIL() << "no exception";
    } catch (const std::string& e) {
        EXPECT_EQ(e, "bank failed");
    }
    EXPECT_TRUE(manager.bank("a"));
    EXPECT_TRUE(manager.bank("b"));
    EXPECT_FALSE(manager.bank("c"));
}

TEST_F(ResourceManagerTest, RenameMovesTheBankAndRejectsUnknownNames) {
    OwningManager manager;
    manager.load(writeFile("rename.xml", "<resources><tests name=\"a\"/><tests name=\"b\"/></resources>"), "");
    TestBank* a = manager.bank("a");
    manager.rename("a", "first");
    EXPECT_EQ(manager.bank("first"), a);
    EXPECT_FALSE(manager.bank("a"));
    try {
        manager.rename("a", "again");
        FAIL() << "no exception";
    } catch (const std::string& e) {
        EXPECT_EQ(e, "Resource \"a\" not found.");
    }
    // Renaming onto a listed name overwrites the entry without destroying that bank.
    TestBank* b = manager.bank("b");
    manager.rename("first", "b");
    EXPECT_EQ(manager.bank("b"), a);
    EXPECT_EQ(manager.banks.size(), 1u);
    EXPECT_EQ(journal.find("~bank"), std::string::npos);
    delete b;
}

TEST_F(ResourceManagerTest, BanksDestroyTheirResourcesLastKeyFirst) {
    {
        TestBank bank;
        bank.label = "owner";
        for (const char* key : {"m", "a", "z"}) bank.add(key, new Item);
        bank.resources["ghost"];  // an empty entry, as a lookup with operator[] leaves it
        // Replacing an entry destroys the old resource.
        bank.add("a", new Item);
        EXPECT_EQ(journal, "~a ");
        journal.clear();

        // A resource destroyed on its own leaves its bank.
        delete bank.find("m");
        EXPECT_EQ(bank.find("m"), nullptr);
        bank.add("m", new Item);

        // A resource whose name was changed behind its bank's back is still destroyed exactly once.
        bank.find("z")->name = "a";
        journal.clear();
        testing::internal::CaptureStdout();
    }
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(journal, "~bank(owner) ~z ~m ~a ");
}

TEST_F(ResourceManagerTest, ResourceOutsideItsEntryWarns) {
    TestBank bank;
    Item* item = new Item;
    bank.add("k", item);
    bank.resources.erase("k");
    testing::internal::CaptureStdout();
    delete item;
    const std::string out = testing::internal::GetCapturedStdout();
    char expected[128];
    std::snprintf(expected, sizeof expected, "[undefined] (warning) Could not remove resource %p from bank %p.\n",
                  static_cast<void*>(item), static_cast<void*>(&bank));
    EXPECT_EQ(out, expected);
}

namespace {

class CountingBank : public norvane::RefreshingBank {
public:
    explicit CountingBank(int elements) : elements(elements) {}
    int size() const override { return elements; }
    void refresh(norvane::RefreshingBankHandler* handler) override {
        for (int i = 0; i < elements; ++i) {
            ++refreshed;
            if (handler) handler->elementRefreshed();
        }
    }
    int elements;
    int refreshed = 0;
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

struct CountedLoader : norvane::ResourceLoader {
    using ResourceLoader::ResourceLoader;
    ~CountedLoader() override { ++destroyed; }
    static int destroyed;
};
int CountedLoader::destroyed = 0;

}  // namespace

TEST_F(ResourceManagerTest, LoaderRefreshesBanksInOrderAndReportsEachElement) {
    CountingBank one(2), two(3);
    Progress progress;
    progress.first = &one;
    auto* loader = new CountedLoader(&progress);
    *loader += &one;
    *loader += &two;
    loader->start();
    EXPECT_EQ(progress.events, "-:0/5 1:1/5 1:2/5 2:3/5 2:4/5 2:5/5 finished");
    EXPECT_EQ(one.refreshed, 2);
    EXPECT_EQ(two.refreshed, 3);
    EXPECT_EQ(CountedLoader::destroyed, 1);
}
