#include "OrvCore/PimplPointerHolder.h"

#include <gtest/gtest.h>

#include <type_traits>

using orv::internal::PimplPointerHolder;

namespace {

/// A facade as they all are: its private class is not known yet.
class FacadePrivate;

class Facade {
public:
    explicit Facade(int* deaths);
    ~Facade();
    void set(int value);
    int value() const;

private:
    PimplPointerHolder<FacadePrivate> m_private;
};

class FacadePrivate {
public:
    explicit FacadePrivate(int* deaths) : m_deaths(deaths) {}
    ~FacadePrivate() {
        ++*m_deaths;
    }

    int m_value = 0;

private:
    int* m_deaths;
};

Facade::Facade(int* deaths) {
    m_private.reset(new FacadePrivate(deaths));
}

Facade::~Facade() = default;

void Facade::set(int value) {
    m_private->m_value = value;
}

int Facade::value() const {
    return m_private->m_value;
}

using Holder = PimplPointerHolder<FacadePrivate>;

static_assert(!std::is_copy_constructible_v<Holder> && !std::is_copy_assignable_v<Holder>);
static_assert(std::is_same_v<decltype(std::declval<const Holder&>().operator->()), const FacadePrivate*>);

TEST(PimplPointerHolder, OwnsTheFacadesPrivateObject) {
    int deaths = 0;
    {
        Facade facade(&deaths);
        facade.set(5);
        EXPECT_EQ(facade.value(), 5);
        EXPECT_EQ(deaths, 0);
    }
    EXPECT_EQ(deaths, 1);
}

TEST(PimplPointerHolder, StartsWithAPointerOrEmpty) {
    int deaths = 0;
    EXPECT_EQ(Holder().operator->(), nullptr);
    EXPECT_EQ(Holder(nullptr).operator->(), nullptr);
    auto* object = new FacadePrivate(&deaths);
    const Holder holder(object);
    EXPECT_EQ(holder.operator->(), object);
}

TEST(PimplPointerHolder, ResetDeletesTheOldObject) {
    int deaths = 0;
    Holder holder(new FacadePrivate(&deaths));
    auto* next = new FacadePrivate(&deaths);
    holder.reset(next);
    EXPECT_EQ(deaths, 1);
    EXPECT_EQ(holder.operator->(), next);
    holder.reset(nullptr);
    EXPECT_EQ(deaths, 2);
    EXPECT_EQ(holder.operator->(), nullptr);
    holder.reset(nullptr);
    EXPECT_EQ(deaths, 2);
}

TEST(PimplPointerHolder, ResetWithTheHeldObjectDoesNotDeleteIt) {
    int deaths = 0;
    auto* object = new FacadePrivate(&deaths);
    {
        Holder holder(object);
        holder.reset(object);
        EXPECT_EQ(deaths, 0);
        EXPECT_EQ(holder.operator->(), object);
    }
    EXPECT_EQ(deaths, 1);
}

} // namespace
