// SPDX-License-Identifier: GPL-3.0-or-later
#include "ai/runtime/model_store.h"

#include <map>

#include "ai/ai_log.h"

namespace kelmo {

namespace {
constexpr const char* kRuntimeFile = "libtensorflowlite_c.so";
}

NetworkLease::NetworkLease(std::shared_ptr<ModelStore> store, NetworkId id,
                           std::unique_ptr<Network> network)
    : store(std::move(store)), id(id), network(std::move(network)) {}

NetworkLease::~NetworkLease() {
    if (network) store->GiveBack(id, std::move(network));
}

std::string ModelStore::FolderOf(const std::string& resources) {
    return (resources.empty() ? std::string(".") : resources) + "/qor_effect/models";
}

std::shared_ptr<ModelStore> ModelStore::Open(const std::string& resources, std::string& error) {
    const std::string folder = FolderOf(resources);
    auto runtime = TensorRuntime::Load(folder + "/" + kRuntimeFile, error);
    if (!runtime) return nullptr;
    // Made after the runtime was loaded, and so destroyed before the runtime's own statics are.
    static std::mutex openMutex;
    static std::map<std::string, std::shared_ptr<ModelStore>> stores;
    const std::lock_guard<std::mutex> lock(openMutex);
    std::shared_ptr<ModelStore>& known = stores[folder];
    if (!known) known = std::make_shared<ModelStore>(folder, std::move(runtime));
    return known;
}

ModelStore::ModelStore(std::string folder, std::unique_ptr<TensorRuntime> runtime)
    : folder(std::move(folder)), runtime(std::move(runtime)) {}

ModelStore::~ModelStore() {
    for (Slot& slot : slots)
        if (slot.loading.valid()) slot.loading.wait();
}

bool ModelStore::Prepare(std::initializer_list<NetworkId> ids, std::string& error) {
    const std::lock_guard<std::mutex> lock(mutex);
    for (NetworkId id : ids) {
        Slot& slot = slots[size_t(id)];
        if (slot.model) continue;
        const std::string path = folder + "/" + SpecOf(id).file;
        slot.model = NetworkModel::Open(*runtime, path);
        if (!slot.model) {
            error = path + " is missing or is no network";
            return false;
        }
    }
    for (NetworkId id : ids) {
        Slot& slot = slots[size_t(id)];
        if (slot.loading.valid()) continue;
        // No ownership of the store: its destructor waits for this.
        slot.loading = std::async(std::launch::async, [this, id] {
                           if (auto network = Load(id)) GiveBack(id, std::move(network));
                       }).share();
    }
    return true;
}

std::unique_ptr<Network> ModelStore::Load(NetworkId id) {
    Slot& slot = slots[size_t(id)];
    std::shared_ptr<NetworkModel> model;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (slot.failed) return nullptr;
        model = slot.model;
    }
    std::string error = "it was not opened";
    auto network = model ? Network::Create(*runtime, model, SpecOf(id), true, error) : nullptr;
    if (!network) {
        const std::lock_guard<std::mutex> lock(mutex);
        if (!slot.failed)
            AiLog(kAiLogError, "AI: %s/%s cannot be used: %s", folder.c_str(), SpecOf(id).file,
                  error.c_str());
        slot.failed = true;
    }
    return network;
}

void ModelStore::GiveBack(NetworkId id, std::unique_ptr<Network> network) {
    const std::lock_guard<std::mutex> lock(mutex);
    slots[size_t(id)].idle.push_back(std::move(network));
}

NetworkLease ModelStore::Lease(NetworkId id) {
    Slot& slot = slots[size_t(id)];
    std::shared_future<void> loading;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        loading = slot.loading;
    }
    if (loading.valid()) loading.wait();
    std::unique_ptr<Network> network;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (!slot.idle.empty()) {
            network = std::move(slot.idle.back());
            slot.idle.pop_back();
        }
    }
    if (!network) network = Load(id);
    return NetworkLease(shared_from_this(), id, std::move(network));
}

}  // namespace kelmo
