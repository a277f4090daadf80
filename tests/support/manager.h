#ifndef TESTS_SUPPORT_MANAGER_H
#define TESTS_SUPPORT_MANAGER_H

#include <string>

#include "resources/manager.h"

// The framework's manager forgets its banks without destroying them; this one destroys them.
struct OwningManager : norvane::ResourceManager {
    ~OwningManager() override {
        for (auto& entry : banks) delete entry.second;
    }
    template <typename Bank>
    Bank* get(const std::string& name) {
        auto it = banks.find(name);
        return it == banks.end() ? nullptr : dynamic_cast<Bank*>(it->second);
    }
};

#endif
