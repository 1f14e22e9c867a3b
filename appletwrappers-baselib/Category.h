#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// A category of the XML description: features and child categories, both in the order in which they were
/// added.
class Category {
  public:
    explicit Category(std::string name) : mName(std::move(name)) {}

    [[nodiscard]] const std::string& getName() const { return mName; }

    Category& addChild(std::string name) {
        mChilds.push_back(std::make_unique<Category>(std::move(name)));
        return *mChilds.back();
    }
    [[nodiscard]] Category& getChild(std::size_t index) const { return *mChilds.at(index); }
    /// The child of this name, or null.
    [[nodiscard]] Category* getChild(std::string_view name) const {
        const auto found = std::find_if(mChilds.begin(), mChilds.end(),
                                        [&](const auto& child) { return child->mName == name; });
        return found != mChilds.end() ? found->get() : nullptr;
    }
    [[nodiscard]] bool hasChild(std::string_view name) const { return getChild(name) != nullptr; }
    [[nodiscard]] std::size_t getChildCount() const { return mChilds.size(); }

    void addFeature(std::string name) { mFeatures.push_back(std::move(name)); }
    [[nodiscard]] const std::string& getFeature(std::size_t index) const { return mFeatures.at(index); }
    [[nodiscard]] bool hasFeature(std::string_view name) const {
        return std::find(mFeatures.begin(), mFeatures.end(), name) != mFeatures.end();
    }
    [[nodiscard]] std::size_t getFeatureCount() const { return mFeatures.size(); }

  private:
    std::string mName;
    std::vector<std::unique_ptr<Category>> mChilds;
    std::vector<std::string> mFeatures;
};
