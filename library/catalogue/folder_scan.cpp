// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/folder_scan.h"

#include <unordered_set>
#include <utility>

#include "catalogue/json_reader.h"
#include "catalogue/xml_reader.h"
#include "platform/file_system.h"

namespace kelmo {
namespace {

constexpr int kMaxDepth = 64;

class FolderScan {
public:
    explicit FolderScan(std::vector<std::shared_ptr<NLEFilterInfo>>& found) : found(found) {}

    void Scan(const std::string& folder, int depth) {
        if (depth > kMaxDepth || !seen.insert(CanonicalPath(folder)).second) {
            return;
        }
        std::string confFile;
        std::string xmlFile;
        for (const FolderEntry& entry : ListFolder(folder)) {
            const std::string path = folder + "/" + entry.name;
            if (entry.isFolder) {
                Scan(path, depth + 1);
                continue;
            }
            // A pipe would be waited for.
            if (!entry.isRegular) {
                continue;
            }
            if (entry.name.find(".conf") != std::string::npos) {
                confFile = path;
            }
            if (entry.name.find("filter.xml") != std::string::npos) {
                xmlFile = path;
            }
        }
        Add(confFile, xmlFile);
    }

private:
    void Add(const std::string& confFile, const std::string& xmlFile) {
        std::shared_ptr<NLEFilterInfo> info;
        if (!confFile.empty()) {
            info = GetFilterInfoFromJson(confFile);
        } else if (!xmlFile.empty()) {
            info = GetFilterInfoFromXml(xmlFile);
        }
        if (info != nullptr) {
            found.push_back(std::move(info));
        }
    }

    std::vector<std::shared_ptr<NLEFilterInfo>>& found;
    std::unordered_set<std::string> seen;
};

}  // namespace

void ScanFolder(const std::string& folder, std::vector<std::shared_ptr<NLEFilterInfo>>& found) {
    FolderScan(found).Scan(folder, 0);
}

}  // namespace kelmo
