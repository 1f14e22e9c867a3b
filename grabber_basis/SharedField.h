#pragma once

/// Fields of a parameter description that move after creation (limits, access flags) while other threads read
/// them without a lock. The record's layout is shared with the runtime, so a field cannot be a std::atomic; the
/// accesses are. Nothing is ordered by them: each field stands for itself.
namespace kavo::shared {

template <class Field>
Field load(const Field& field) {
    static_assert(sizeof(Field) <= sizeof(int), "one access of the machine");
    return __atomic_load_n(&field, __ATOMIC_RELAXED);
}

template <class Field>
void store(Field& field, Field value) {
    static_assert(sizeof(Field) <= sizeof(int), "one access of the machine");
    __atomic_store_n(&field, value, __ATOMIC_RELAXED);
}

} // namespace kavo::shared
