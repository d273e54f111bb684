#include "base/resource_modules.h"

namespace {

std::vector<HINSTANCE> g_modules;

}  // namespace

const std::vector<HINSTANCE>& ResourceModules() noexcept {
    return g_modules;
}

HINSTANCE ResourceInstance() noexcept {
    return g_modules.empty() ? nullptr : g_modules.front();
}

void AddResourceModule(HINSTANCE module) {
    g_modules.push_back(module);
}

void ForgetResourceModules() noexcept {
    g_modules.clear();
}
