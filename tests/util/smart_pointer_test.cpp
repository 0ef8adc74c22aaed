#include <zelutil/util/smart_pointer.h>

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>

namespace zelutil::test {
namespace {

/// Counts how often it has been deleted.
class Shape {
public:
    explicit Shape(int& deleted) : deleted_(deleted) {}
    Shape(const Shape&) = delete;
    Shape& operator=(const Shape&) = delete;
    virtual ~Shape() = default;
    virtual int corners() const = 0;

protected:
    int& deleted_;
};

class Pad : public Shape {
public:
    using Shape::Shape;
    ~Pad() override { ++deleted_; }
    int corners() const override { return 4; }
};

using Pointer = Smart::Pointer<Shape>;

class SmartPointer : public ::testing::Test {
protected:
    int deleted = 0;
    Shape* const pad = new Pad(deleted);
    Pointer holder{pad};
};

TEST_F(SmartPointer, ReachesItsObject) {
    EXPECT_EQ(holder.get(), pad);
    EXPECT_EQ(&*holder, pad);
    EXPECT_EQ(holder->corners(), 4);
    EXPECT_TRUE(static_cast<bool>(holder));
}

TEST_F(SmartPointer, DeletesThroughTheVirtualDestructorWhenTheLastHolderGoes) {
    holder = Pointer();
    EXPECT_EQ(deleted, 1);
    EXPECT_FALSE(static_cast<bool>(holder));
}

TEST_F(SmartPointer, ACopyIsOneHolderMore) {
    Pointer copy(holder);
    {
        const Pointer third = copy;
        EXPECT_EQ(third.get(), pad);
    }
    holder = Pointer();
    EXPECT_EQ(deleted, 0);
    EXPECT_EQ(copy.get(), pad);
    copy = Pointer();
    EXPECT_EQ(deleted, 1);
}

TEST_F(SmartPointer, AMoveLeavesNothingBehind) {
    Pointer next(std::move(holder));
    EXPECT_EQ(holder.get(), nullptr);
    EXPECT_EQ(next.get(), pad);
    Pointer last;
    last = std::move(next);
    EXPECT_EQ(next.get(), nullptr);
    EXPECT_EQ(deleted, 0);
    last = Pointer();
    EXPECT_EQ(deleted, 1);
}

TEST_F(SmartPointer, AssignmentLetsGoOfTheFormerObject) {
    int otherDeleted = 0;
    Pointer other(new Pad(otherDeleted));
    other = holder;
    EXPECT_EQ(otherDeleted, 1);
    EXPECT_EQ(other.get(), pad);
    EXPECT_EQ(deleted, 0);
}

TEST_F(SmartPointer, AssignedToItselfStaysAsItIs) {
    Pointer& self = holder;
    holder = self;
    EXPECT_EQ(holder.get(), pad);
    holder = std::move(self);
    EXPECT_EQ(holder.get(), pad);
    EXPECT_EQ(deleted, 0);
}

TEST_F(SmartPointer, TheObjectIsDeletedAfterTheHolderHasLetGo) {
    struct Looker {
        explicit Looker(Smart::Pointer<Looker>& pointer) : holder(pointer) {}
        Looker(const Looker&) = delete;
        Looker& operator=(const Looker&) = delete;
        ~Looker() { EXPECT_EQ(holder.get(), nullptr); }
        Smart::Pointer<Looker>& holder;
    };
    Smart::Pointer<Looker> looker;
    looker = Smart::Pointer<Looker>(new Looker(looker));
    looker = Smart::Pointer<Looker>();
}

TEST(EmptySmartPointer, HasNoObjectToReach) {
    const Pointer empties[] = {Pointer(), Pointer(nullptr), Pointer(Pointer())};
    for (const Pointer& empty : empties) {
        EXPECT_EQ(empty.get(), nullptr);
        EXPECT_FALSE(static_cast<bool>(empty));
        EXPECT_THROW(*empty, Smart::PointerExceptions::UninitializedAccess);
        EXPECT_THROW(empty->corners(), Smart::PointerExceptions::UninitializedAccess);
    }
}

TEST(EmptySmartPointer, ThrowsWhatTheBaseOfItsNamespaceCatches) {
    const Pointer empty;
    EXPECT_THROW(*empty, Smart::PointerExceptions::Base);
}

TEST(SmartPointerClass, IsNeitherMadeNorTestedSilently) {
    EXPECT_FALSE((std::is_convertible_v<Shape*, Pointer>));
    EXPECT_FALSE((std::is_convertible_v<Pointer, bool>));
    EXPECT_TRUE(std::is_nothrow_default_constructible_v<Pointer>);
    EXPECT_TRUE(std::is_nothrow_copy_constructible_v<Pointer>);
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<Pointer>);
}

}  // namespace
}  // namespace zelutil::test
