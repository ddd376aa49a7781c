#include <Dictionary/Dictionary.h>
#include <Dictionary/DictionaryIndexWithUnique.h>
#include <Dictionary/SingletonBase.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <random>
#include <thread>
#include <utility>

namespace {

enum Number : std::int32_t {};

struct Fruit {
    Fruit(const char* fruitName, std::int32_t fruitNumber) : name(fruitName), number(Number{fruitNumber}) {
        ++alive;
    }
    Fruit(const Fruit&) = delete;
    ~Fruit() { --alive; }

    CPString name;
    Number number;
    static inline int alive = 0;
};

} // namespace

template <>
struct DictionaryTypeName<Number> {
    static constexpr const char* value = "enum Number";
};
template <>
struct DictionaryTypeName<Fruit> {
    static constexpr const char* value = "class Fruit";
};

namespace {

class NameIndex : public DictionaryIndexWithUnique<CPString, Fruit> {
public:
    CPString GetKey(const Fruit& fruit, int) const override { return fruit.name; }
};

class NumberIndex final : public DictionaryIndexWithUnique<Number, Fruit> {
public:
    Number GetKey(const Fruit& fruit, int) const override { return fruit.number; }
};

// Counts the keys under which entries are added, for each as many as its name has characters.
class LetterCounter final : public NameIndex {
public:
    std::map<std::string, int> keys;

    void AddIndexEntry(Fruit* fruit, int keyNumber, bool& hasMoreKeys) override {
        EXPECT_EQ(keyNumber, keys[fruit->name.utf8Bytes()]++);
        hasMoreKeys = static_cast<std::size_t>(keyNumber) + 1 < fruit->name.view().size();
    }
    void DeleteAllEntries() override { ADD_FAILURE() << "does not own the entries"; }
};

template <typename Exception>
void ExpectFailure(const std::function<void()>& action, const std::string& message,
                   const std::string& function) {
    try {
        action();
        ADD_FAILURE() << "no failure: " << message;
    } catch (const Exception& failure) {
        EXPECT_EQ(failure.what(), message + "\r\n");
        EXPECT_EQ(failure.getDebugContext().file(), "UtilitiesDll/Dictionary/DictionaryIndexWithUnique");
        EXPECT_EQ(failure.getDebugContext().function(), "DictionaryIndexWithUnique<" + function);
    }
}

} // namespace

TEST(DictionaryIndexWithUnique, SaysWhichKeyIsMissingOrDouble) {
    NameIndex names;
    NumberIndex numbers;
    Fruit pear("pear", 5001);
    const Fruit otherPear("pear", 5001);
    bool hasMoreKeys = true;
    names.AddIndexEntry(&pear, 0, hasMoreKeys);
    EXPECT_FALSE(hasMoreKeys);
    numbers.AddIndexEntry(&pear, 0, hasMoreKeys);

    const std::string missing = "Could not find the requested entry with key=";
    const std::string byName = "class CPString,class Fruit>::", byNumber = "enum Number,class Fruit>::";
    using Missing = CPExceptionUnknownKeyRequest;
    ExpectFailure<Missing>([&] { (void)names.GetEntryRef("Pear"); }, missing + "Pear",
                           byName + "GetEntryRef");
    ExpectFailure<Missing>([&] { (void)numbers.GetNonConstEntryRef(Number{-7}); }, missing + "-7",
                           byNumber + "GetNonConstEntryRef");
    const Fruit plum("plum", 0);
    ExpectFailure<Missing>([&] { names.RemoveIndexEntries(plum); }, missing + "plum",
                           byName + "RemoveIndexEntries");
    ExpectFailure<CPExceptionDuplicateDictionaryIndexEntry>(
        [&] { numbers.AddIndexEntry(const_cast<Fruit*>(&otherPear), 0, hasMoreKeys); },
        "An entry already exists in this index with the key=5001! Insertion failed!",
        byNumber + "AddIndexEntry");

    // None of that changed anything.
    EXPECT_EQ(&numbers.GetNonConstEntryRef(Number{5001}), &pear);
    EXPECT_EQ(names.FindEntryWithKeyOf(otherPear), &pear);
    EXPECT_LT(names.CompareKeys(pear, plum), 0);
    EXPECT_GT(numbers.CompareKeys(pear, plum), 0);
    std::vector<const Fruit*> found{&plum};
    std::as_const(names).FindEntries("pear", found);
    EXPECT_THAT(found, testing::ElementsAre(&pear));
    std::as_const(names).FindEntries("plum", found);
    EXPECT_THAT(found, testing::IsEmpty());
}

// Numbers that share their low bits, and the ends of the range, collide as much as numbers can.
TEST(DictionaryIndexWithUnique, AgreesWithAMapUnderComingAndGoing) {
    std::mt19937 random(4711);
    std::vector<std::unique_ptr<Fruit>> fruits;
    for (std::int32_t i = -40; i < 40; ++i)
        for (const std::int32_t step : {1, 4096, 0x2000000})
            fruits.push_back(std::make_unique<Fruit>(
                (std::to_string(step) + std::string(static_cast<std::size_t>(i + 41), 'x')).c_str(),
                i * step + step / 2));
    fruits.push_back(std::make_unique<Fruit>("", std::numeric_limits<std::int32_t>::max()));
    fruits.push_back(std::make_unique<Fruit>("least", std::numeric_limits<std::int32_t>::min()));

    NameIndex names;
    NumberIndex numbers;
    std::map<Number, Fruit*> expected;
    for (int round = 0; round < 4000; ++round) {
        Fruit& fruit = *fruits[random() % fruits.size()];
        bool hasMoreKeys = false;
        if (expected.insert({fruit.number, &fruit}).second) {
            names.AddIndexEntry(&fruit, 0, hasMoreKeys);
            numbers.AddIndexEntry(&fruit, 0, hasMoreKeys);
        } else if (expected.at(fruit.number) == &fruit) {
            expected.erase(fruit.number);
            names.RemoveIndexEntries(fruit);
            numbers.RemoveIndexEntries(fruit);
        }
        if (round % 50 != 0) continue;
        for (const auto& each : fruits) {
            const auto found = expected.find(each->number);
            const bool isPresent = found != expected.end() && found->second == each.get();
            ASSERT_EQ(names.FindEntry(each->name.view()), isPresent ? each.get() : nullptr);
            ASSERT_EQ(numbers.FindEntry(each->number), found != expected.end() ? found->second : nullptr);
        }
        std::vector<const Fruit*> all;
        numbers.GetAllEntries(all);
        ASSERT_EQ(all.size(), expected.size());
    }
}

// Each length is read in its own way; a byte that is not looked at would show here.
TEST(DictionaryIndexWithUnique, TellsTextsApartByEveryByte) {
    NameIndex names;
    std::vector<std::unique_ptr<Fruit>> fruits;
    bool hasMoreKeys = false;
    for (std::size_t size = 0; size <= 70; ++size) {
        std::string text = "12345" + std::string(size, 'a');
        fruits.push_back(std::make_unique<Fruit>(text.c_str(), 0));
        names.AddIndexEntry(fruits.back().get(), 0, hasMoreKeys);
        for (char& byte : text) {
            EXPECT_FALSE(names.IsKeyPresent(text + "b"));
            const char kept = std::exchange(byte, 'c');
            EXPECT_FALSE(names.IsKeyPresent(text)) << text;
            fruits.push_back(std::make_unique<Fruit>(text.c_str(), 0));
            names.AddIndexEntry(fruits.back().get(), 0, hasMoreKeys);
            byte = kept;
        }
        EXPECT_FALSE(names.IsKeyPresent(std::string_view(text).substr(0, 4)));
    }
    for (const auto& fruit : fruits) {
        const std::string_view text = fruit->name.view();
        ASSERT_EQ(names.FindEntry(text), fruit.get()) << text;
        if (!text.starts_with("12345")) continue;
        ASSERT_EQ(names.FindEntry(DictionaryNumberedText(12345, text.substr(5))), fruit.get()) << text;
    }
    EXPECT_EQ(names.FindEntry(DictionaryNumberedText(2345, "")), nullptr);
}

TEST(Dictionary, OwnsItsEntriesAndShowsThemThroughEveryIndex) {
    ASSERT_EQ(Fruit::alive, 0);
    {
        Dictionary<Fruit> dictionary;
        const NameIndex& names = dictionary.AddIndex(std::make_unique<NameIndex>());
        dictionary.AddEntry(std::make_unique<Fruit>("fig", 3));
        // One that comes later holds what was there and what comes after it.
        const NumberIndex& numbers = dictionary.AddIndex(std::make_unique<NumberIndex>());
        const LetterCounter& letters = dictionary.AddIndex(std::make_unique<LetterCounter>());
        dictionary.AddEntry(std::make_unique<Fruit>("kiwi", 1));
        EXPECT_EQ(&names.GetEntryRef("fig"), &numbers.GetEntryRef(Number{3}));
        EXPECT_EQ(letters.keys, (std::map<std::string, int>{{"fig", 3}, {"kiwi", 4}}));
        std::vector<const Fruit*> all;
        names.GetAllEntries(all);
        EXPECT_THAT(all, testing::ElementsAre(&names.GetEntryRef("fig"), &names.GetEntryRef("kiwi")));

        // Refused by the primary index, and by another one.
        EXPECT_THROW(dictionary.AddEntry(std::make_unique<Fruit>("fig", 4)),
                     CPExceptionDuplicateDictionaryIndexEntry);
        EXPECT_EQ(Fruit::alive, 2);
        EXPECT_THROW(dictionary.AddEntry(std::make_unique<Fruit>("lime", 3)),
                     CPExceptionDuplicateDictionaryIndexEntry);
    }
    EXPECT_EQ(Fruit::alive, 0);
}

namespace {

class Slow final : public SingletonBase<Slow> {
public:
    static inline std::atomic<int> made = 0;

private:
    friend SingletonBase<Slow>;
    Slow() {
        ++made;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
};

} // namespace

TEST(SingletonBase, IsBuiltOnceForAllThreads) {
    Slow* instances[8] = {};
    std::vector<std::thread> threads;
    for (Slow*& instance : instances)
        threads.emplace_back([&instance] { instance = Slow::Instance(); });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_THAT(instances, testing::Each(testing::AllOf(testing::NotNull(), instances[0])));
    EXPECT_EQ(Slow::made, 1);
}
