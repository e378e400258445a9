// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <future>
#include <initializer_list>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "ai/runtime/network.h"

namespace kelmo {

class ModelStore;

/// A network lent to one user; goes back to its store with the lease. Empty when there is none.
class NetworkLease {
public:
    NetworkLease() = default;
    NetworkLease(std::shared_ptr<ModelStore> store, NetworkId id, std::unique_ptr<Network> network);
    ~NetworkLease();
    NetworkLease(NetworkLease&&) = default;
    NetworkLease& operator=(NetworkLease&&) = delete;

    explicit operator bool() const { return network != nullptr; }
    Network* operator->() const { return network.get(); }

private:
    std::shared_ptr<ModelStore> store;
    NetworkId id = NetworkId::kCount;
    std::unique_ptr<Network> network;
};

/// The runtime and the networks of one folder of models. Networks keep nothing from run to run, so
/// the filters of a process borrow them in turn: however many effects use masks, one network serves
/// them as long as they run one after the other. All operations from any thread.
class ModelStore : public std::enable_shared_from_this<ModelStore> {
public:
    /// The store of `<resources>/qor_effect/models`: one for the process, kept until its end, since
    /// loading takes longer than most effects live. Null, with the reason in `error`, when there is
    /// no runtime; the next call looks again.
    static std::shared_ptr<ModelStore> Open(const std::string& resources, std::string& error);
    static std::string FolderOf(const std::string& resources);

    explicit ModelStore(std::string folder, std::unique_ptr<TensorRuntime> runtime);
    /// Waits for loading that is under way.
    ~ModelStore();

    /// Opens the files of these networks and begins to load them in the background. False, with the
    /// file in `error`, when one is missing or is no model.
    bool Prepare(std::initializer_list<NetworkId> ids, std::string& error);
    /// Lends a network; waits until it is loaded. Only after `Prepare`. Empty, and an error in the
    /// log once, when it cannot be used.
    NetworkLease Lease(NetworkId id);

    const std::string& Folder() const { return folder; }

private:
    friend class NetworkLease;
    struct Slot {
        std::shared_ptr<NetworkModel> model;
        std::shared_future<void> loading;
        std::vector<std::unique_ptr<Network>> idle;
        bool failed = false;
    };

    std::unique_ptr<Network> Load(NetworkId id);
    void GiveBack(NetworkId id, std::unique_ptr<Network> network);

    const std::string folder;
    const std::unique_ptr<TensorRuntime> runtime;
    std::mutex mutex;
    std::array<Slot, size_t(NetworkId::kCount)> slots;
};

}  // namespace kelmo
