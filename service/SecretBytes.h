/* Memory for what must not stay behind in it. */
#pragma once

#include <sodium.h>

#include <cstddef>
#include <memory>
#include <vector>

/* As the stateless allocator `Source`, but everything is overwritten with zeros before it is given back, also
 * when a container only moves to a larger place. */
template <class Value, class Source = std::allocator<Value>>
struct WipingAllocator {
    using value_type = Value;

    Value* allocate(size_t count) { return Source().allocate(count); }

    void deallocate(Value* values, size_t count) {
        sodium_memzero(values, count * sizeof(Value));
        Source().deallocate(values, count);
    }

    bool operator==(const WipingAllocator&) const = default;
};

/* A vector, not a string: a string keeps short texts in itself, where no allocator wipes them. */
using SecretBytes = std::vector<char, WipingAllocator<char>>;
