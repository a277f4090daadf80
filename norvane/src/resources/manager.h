#ifndef NORVANE_RESOURCES_MANAGER_H
#define NORVANE_RESOURCES_MANAGER_H

#include <list>
#include <map>
#include <string>
#include <type_traits>

#include "debug/log.h"

namespace norvane {

namespace xml {
class Node;
}
using xml::Node;

class ResourceManager;

// Base of every bank. `dir` handed to getFromNode is empty or ends with "/".
class BasicResourceBank {
public:
    virtual ~BasicResourceBank() = default;
    virtual std::string getNodeName() { return std::string(); }
    virtual void getFromNode(const Node* node, const std::string& dir);
    // Reads a definition file; its root must be named getNodeName(). XML errors are thrown on.
    virtual void load(const std::string& filename, const std::string& dir);

    ResourceManager* manager = nullptr;  // the manager whose definition made this bank
};

template <typename B>
class Resource {
public:
    virtual ~Resource() = default;
    B* bank = nullptr;  // null while in no bank
};

// A resource that removes its entry from its bank when destroyed.
template <typename B, typename K>
class NamedResource : public Resource<B> {
public:
    ~NamedResource() override {
        if (!this->bank) return;
        if (this->bank->resources.erase(name) == 0) {
            debug::warning(0, "Could not remove resource %p from bank %p.", static_cast<void*>(this),
                           static_cast<void*>(this->bank));
        }
        this->bank = nullptr;
    }
    K name{};
};

// Owns its resources.
template <typename T, typename K = std::string>
class NamedResourceBank : public BasicResourceBank {
public:
    ~NamedResourceBank() override {
        while (!resources.empty()) {
            auto last = std::prev(resources.end());
            T* resource = last->second;
            if (!resource) {
                resources.erase(last);  // left behind by a lookup with operator[]
                continue;
            }
            // A resource that does not know its entry would leave it behind, and this loop would
            // meet it again (twice deleted) or erase a neighbour's entry.
            resource->name = last->first;
            const size_t before = resources.size();
            delete resource;
            if (resources.size() == before) resources.erase(last);
        }
    }
    virtual int size() const { return static_cast<int>(resources.size()); }

    // Enters `resource` under `key`; a resource already there is destroyed.
    void add(const K& key, T* resource) {
        auto it = resources.find(key);
        if (it != resources.end() && it->second != resource) delete it->second;
        resource->bank = static_cast<typename std::remove_pointer<decltype(resource->bank)>::type*>(this);
        resource->name = key;
        resources[key] = resource;
    }
    T* find(const K& key) const {
        auto it = resources.find(key);
        return it == resources.end() ? nullptr : it->second;
    }

    std::map<K, T*> resources;
};

class ResourceBankGenerator {
public:
    ResourceBankGenerator();
    virtual ~ResourceBankGenerator() = default;
    // A new empty bank when `type` is this generator's element name, null otherwise.
    virtual BasicResourceBank* generateBank(const std::string& type) const = 0;
};

std::list<const ResourceBankGenerator*>& getGenerators();
void registerResourceBankGenerator(const ResourceBankGenerator* generator);
void unregisterResourceBankGenerator(const ResourceBankGenerator* generator);

// Banks by name. Forgets its banks without destroying them: they live until the process ends.
class ResourceManager : public BasicResourceBank {
public:
    ~ResourceManager() override;
    std::string getNodeName() override;
    void getFromNode(const Node* node, const std::string& dir) override;
    virtual BasicResourceBank* createResourceBank(const std::string& type);
    void rename(const std::string& from, const std::string& to);

    std::map<std::string, BasicResourceBank*> banks;
};

class RefreshingBankHandler {
public:
    virtual ~RefreshingBankHandler() = default;
    virtual void elementRefreshed() = 0;
};

// A bank whose elements can be reloaded one by one.
class RefreshingBank {
public:
    virtual ~RefreshingBank() = default;
    virtual int size() const = 0;
    virtual void refresh(RefreshingBankHandler* handler) = 0;
};

class ResourceLoaderHandler {
public:
    virtual ~ResourceLoaderHandler() = default;
    virtual void onLoadingFinished() = 0;
    virtual void onLoadingProgress(RefreshingBank* bank, int done, int total) = 0;
};

// Refreshes its banks in order, then destroys itself: create it with new.
class ResourceLoader : public RefreshingBankHandler {
public:
    explicit ResourceLoader(ResourceLoaderHandler* handler) : handler(handler) {}
    ResourceLoader& operator+=(RefreshingBank* bank);
    void start();
    void thread();
    void elementRefreshed() override;

private:
    std::list<RefreshingBank*> banks;
    ResourceLoaderHandler* handler;
    RefreshingBank* current = nullptr;
    int count = 0;
    int total = 0;
};

int loaderThreadStarter(void* loader);

}  // namespace norvane

#endif
