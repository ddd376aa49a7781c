#pragma once

/// A class of which the process has one object, built when it is first asked for and kept to the end. T
/// derives from SingletonBase<T> and makes it a friend. A T that more than one module uses has an exported
/// Instance() of its own over this one, or each module would build an object.
template <typename T>
class SingletonBase {
public:
    SingletonBase(const SingletonBase&) = delete;
    SingletonBase& operator=(const SingletonBase&) = delete;
    virtual ~SingletonBase() = default;

    /// Any thread. A failure of the constructor leaves; the next call tries again.
    [[nodiscard]] static T* Instance() {
        static T* const instance = new T();
        return instance;
    }

protected:
    SingletonBase() = default;
};
