// Subscriptions as entries of the alert-destination table: every change
// is made under the table's cross-process lock and committed at once.
#pragma once

#include <functional>
#include <optional>

#include "platform/libalert.h"

namespace odata::redfish {

// Entry n - 1 of subscription id n; null for an id outside 1 to 16.
std::optional<int> entry_of_subscription(int id);

// Whether an entry holds a subscription at all (enabled or configured).
bool is_subscription(const St_AlertDest& entry);

// Changes the subscription at index as edit says, on the entry as it is
// under the lock; edit returns false to change nothing.
enum class edited_subscription { changed, refused, not_found, failed };
edited_subscription edit_subscription(int index, const std::function<bool(St_AlertDest&)>& edit);

struct created_subscription {
    enum outcome { created, limit_exceeded, failed } outcome;
    int index;
};

// Stores entry in the first free entry, chosen under the same lock.
created_subscription store_new_subscription(const St_AlertDest& entry);

bool delete_subscription(int index);

}  // namespace odata::redfish
