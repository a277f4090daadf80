#include "resources/manager.h"

#include <algorithm>
#include <memory>

#include "xml/xml.h"

namespace norvane {

namespace {
const char* const XML_RESOURCES = "resources";
const char* const XML_NAME = "name";
const char* const XML_DIR = "dir";
}  // namespace

void BasicResourceBank::getFromNode(const Node*, const std::string&) {}

void BasicResourceBank::load(const std::string& filename, const std::string& dir) {
    std::string base = dir;
    if (base.empty()) {
        const size_t slash = filename.rfind('/');
        if (slash != std::string::npos) base = filename.substr(0, slash + 1);
    }
    if (!base.empty() && base.back() != '/') base += '/';
    std::unique_ptr<Node> root(xml::loadXML(filename.c_str()));
    if (!root || root->name != getNodeName()) return;
    getFromNode(root.get(), base + root->getAttribute(XML_DIR, std::string()));
}

ResourceBankGenerator::ResourceBankGenerator() { registerResourceBankGenerator(this); }

std::list<const ResourceBankGenerator*>& getGenerators() {
    static std::list<const ResourceBankGenerator*> generators;
    return generators;
}

void registerResourceBankGenerator(const ResourceBankGenerator* generator) { getGenerators().push_back(generator); }

void unregisterResourceBankGenerator(const ResourceBankGenerator* generator) { getGenerators().remove(generator); }

ResourceManager::~ResourceManager() { banks.clear(); }

std::string ResourceManager::getNodeName() { return XML_RESOURCES; }

void ResourceManager::getFromNode(const Node* node, const std::string& dir) {
    for (const Node* child : node->children) {
        const std::string name = child->getAttribute(XML_NAME, std::string());
        const std::string bankDir = dir + child->getAttribute(XML_DIR, std::string());
        if (name.empty()) {
            debug::error(dbgResources, "Missing name attribute from resource bank node.");
            continue;
        }
        BasicResourceBank* bank = createResourceBank(child->name);
        if (!bank) {
            debug::warning(dbgResources, "Unknown resource bank type \"%s\".", child->name.c_str());
            continue;
        }
        auto old = banks.find(name);
        if (old != banks.end()) delete old->second;
        banks[name] = bank;
        bank->manager = this;
        bank->getFromNode(child, bankDir);
    }
}

BasicResourceBank* ResourceManager::createResourceBank(const std::string& type) {
    for (const ResourceBankGenerator* generator : getGenerators()) {
        if (BasicResourceBank* bank = generator->generateBank(type)) return bank;
    }
    return nullptr;
}

void ResourceManager::rename(const std::string& from, const std::string& to) {
    auto it = banks.find(from);
    if (it == banks.end()) throw std::string("Resource \"" + from + "\" not found.");
    BasicResourceBank* bank = it->second;
    banks.erase(it);
    banks[to] = bank;
}

ResourceLoader& ResourceLoader::operator+=(RefreshingBank* bank) {
    banks.push_back(bank);
    return *this;
}

void ResourceLoader::start() {
    count = 0;
    total = 0;
    for (RefreshingBank* bank : banks) total += bank->size();
    if (handler) handler->onLoadingProgress(nullptr, 0, total);
    thread();
}

void ResourceLoader::thread() {
    for (RefreshingBank* bank : banks) {
        current = bank;
        bank->refresh(this);
    }
    if (handler) handler->onLoadingFinished();
    delete this;
}

void ResourceLoader::elementRefreshed() {
    ++count;
    if (handler) handler->onLoadingProgress(current, count, total);
}

int loaderThreadStarter(void* loader) {
    static_cast<ResourceLoader*>(loader)->thread();
    return 0;
}

}  // namespace norvane
