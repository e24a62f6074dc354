// Bulk operations of the arrays beside the plain loops over raw buffers that they must not be slower than.

#include "LibUnstructGrid/VTOArray.h"
#include "LibUnstructGrid/VTOLinAlgebra.h"

#include "Benchmarks/Claims.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <random>
#include <vector>

namespace {

constexpr int itemCount = 10'000'000;
constexpr int pointCount = 3'000'000;
constexpr double limit = 1.2;

/// Keeps what a loop computes from being thrown away.
volatile double sink = 0;

/// One pass takes a few milliseconds, which is too short to compare.
std::function<void()> passes(const std::function<void()>& pass) {
    return [pass] {
        for (int i = 0; i < 20; ++i) {
            pass();
        }
    };
}

void addClaim(orvbench::Claims& claims, const std::string& name, const std::function<void()>& prepare,
              const std::function<void()>& ours, const std::function<void()>& rival) {
    claims.add(name, limit, {prepare, passes(ours)}, {prepare, passes(rival)});
}

/// An array, whose own buffer the plain loops work on: the same memory for both sides.
template <typename Array, typename Item>
struct Data {
    std::vector<Item> source = std::vector<Item>(itemCount);
    Array array;

    void fill() {
        std::mt19937 engine(1);
        for (Item& item : source) {
            item = static_cast<Item>(engine() % 1000);
        }
        array.CopyData(source.data(), itemCount, 0);
    }
};

template <typename Array, typename Item>
void addNumbers(orvbench::Claims& claims, const std::string& name) {
    auto data = std::make_shared<Data<Array, Item>>();
    const auto fill = [data] { data->fill(); };

    const auto copyLoop = [data] {
        const Item* source = data->source.data();
        Item* buffer = data->array.GetDataPtr();
        for (int i = 0; i < itemCount; ++i) {
            buffer[i] = source[i];
        }
    };
    addClaim(
        claims, name + "::CopyData of all items", fill,
        [data] { data->array.CopyData(data->source.data(), itemCount, 0); }, copyLoop);
    addClaim(
        claims, name + "::CopyData of more items", fill,
        [data] {
            data->array.SetNumItems(itemCount - 1);
            data->array.CopyData(data->source.data(), itemCount, 0);
        },
        copyLoop);

    addClaim(
        claims, name + "::Offset", fill, [data] { data->array.Offset(Item(3), false); },
        [data] {
            Item* buffer = data->array.GetDataPtr();
            for (int i = 0; i < itemCount; ++i) {
                buffer[i] += Item(3);
            }
        });

    addClaim(
        claims, name + "::Sum", fill, [data] { sink = static_cast<double>(data->array.Sum(0, -1, false)); },
        [data] {
            const Item* buffer = data->array.GetDataPtr();
            Item sum = 0;
            for (int i = 0; i < itemCount; ++i) {
                sum += buffer[i];
            }
            sink = static_cast<double>(sum);
        });

    const auto extremes = [data](bool bIgnoreUndefined) {
        Item min = 0;
        Item max = 0;
        data->array.FindMinMax(&min, &max, 0, -1, bIgnoreUndefined);
        sink = static_cast<double>(min) + static_cast<double>(max);
    };
    addClaim(
        claims, name + "::FindMinMax", fill, [extremes] { extremes(false); },
        [data] {
            const Item* buffer = data->array.GetDataPtr();
            Item min = buffer[0];
            Item max = buffer[0];
            for (int i = 1; i < itemCount; ++i) {
                min = std::min(min, buffer[i]);
                max = std::max(max, buffer[i]);
            }
            sink = static_cast<double>(min) + static_cast<double>(max);
        });
}

/// Undefined values, and what only floating numbers have.
template <typename Array, typename Item>
void addFloating(orvbench::Claims& claims, const std::string& name, Item undefinedLimit) {
    auto data = std::make_shared<Data<Array, Item>>();
    const auto fill = [data] { data->fill(); };

    addClaim(
        claims, name + "::Scale", fill, [data] { data->array.Scale(Item(3), false); },
        [data] {
            Item* buffer = data->array.GetDataPtr();
            for (int i = 0; i < itemCount; ++i) {
                buffer[i] *= Item(3);
            }
        });

    addClaim(
        claims, name + "::Scale of defined items", fill, [data] { data->array.Scale(Item(3), true); },
        [data, undefinedLimit] {
            Item* buffer = data->array.GetDataPtr();
            for (int i = 0; i < itemCount; ++i) {
                if (buffer[i] < undefinedLimit) {
                    buffer[i] *= Item(3);
                }
            }
        });

    addClaim(
        claims, name + "::Sum of defined items", fill, [data] { sink = data->array.Sum(0, -1, true); },
        [data, undefinedLimit] {
            const Item* buffer = data->array.GetDataPtr();
            Item sum = 0;
            for (int i = 0; i < itemCount; ++i) {
                if (!(buffer[i] < undefinedLimit)) {
                    sum = undefinedLimit;
                    break;
                }
                sum += buffer[i];
            }
            sink = sum;
        });

    addClaim(
        claims, name + "::FindMinMax of defined items", fill,
        [data] {
            Item min = 0;
            Item max = 0;
            data->array.FindMinMax(&min, &max, 0, -1, true);
            sink = min + max;
        },
        [data, undefinedLimit] {
            const Item* buffer = data->array.GetDataPtr();
            Item min = Item(1e30f);
            Item max = Item(-1e30f);
            for (int i = 0; i < itemCount; ++i) {
                if (!(buffer[i] > undefinedLimit)) {
                    min = std::min(min, buffer[i]);
                    max = std::max(max, buffer[i]);
                }
            }
            sink = min + max;
        });
}

VTMatrix4 rotation() {
    VTMatrix4 matrix;
    matrix.LoadIdentity();
    matrix.RotateAxisAngle(1, 2, 3, 0.7);
    matrix.Translate(0.1, 0.2, 0.3);
    return matrix;
}

template <typename Array, typename Vector, typename Real>
void addPoints(orvbench::Claims& claims, const std::string& name) {
    struct Points {
        std::vector<Real> source = std::vector<Real>(3 * pointCount);
        Array array;
        VTMatrix4 matrix = rotation();

        void fill() {
            std::mt19937 engine(1);
            for (Real& number : source) {
                number = static_cast<Real>(engine() % 1000);
            }
            array.CopyData(source.data(), pointCount, 0);
        }
    };
    auto data = std::make_shared<Points>();
    const auto fill = [data] { data->fill(); };

    addClaim(
        claims, name + "::TransformPoints", fill, [data] { data->array.TransformPoints(data->matrix, 0, -1); },
        [data] {
            Real m[16];
            std::copy(data->matrix.v, data->matrix.v + 16, m);
            Real* p = &data->array.GetDataPtr()->x;
            for (int i = 0; i < pointCount; ++i, p += 3) {
                const Real x = p[0];
                const Real y = p[1];
                const Real z = p[2];
                p[0] = m[0] * x + m[4] * y + m[8] * z + m[12];
                p[1] = m[1] * x + m[5] * y + m[9] * z + m[13];
                p[2] = m[2] * x + m[6] * y + m[10] * z + m[14];
            }
        });

    addClaim(
        claims, name + "::CopyData of triples", fill,
        [data] { data->array.CopyData(data->source.data(), pointCount, 0); },
        [data] {
            const Real* source = data->source.data();
            Vector* target = data->array.GetDataPtr();
            for (int i = 0; i < pointCount; ++i) {
                target[i].x = source[3 * i];
                target[i].y = source[3 * i + 1];
                target[i].z = source[3 * i + 2];
            }
        });
}

void addVectors(orvbench::Claims& claims) {
    struct Vectors {
        VTVectorArray array;

        void fill() {
            std::mt19937 engine(1);
            array.Alloc(pointCount, -1, true);
            for (int i = 0; i < pointCount; ++i) {
                array.Set(i, engine() % 1000, engine() % 1000, engine() % 1000);
            }
        }
    };
    auto data = std::make_shared<Vectors>();
    const auto fill = [data] { data->fill(); };

    addClaim(
        claims, "VTVectorArray::Offset", fill, [data] { data->array.Offset(1, 2, 3, false); },
        [data] {
            VTVector* buffer = data->array.GetDataPtr();
            for (int i = 0; i < pointCount; ++i) {
                buffer[i].x += 1;
                buffer[i].y += 2;
                buffer[i].z += 3;
            }
        });

    addClaim(
        claims, "VTVectorArray::Scale", fill, [data] { data->array.Scale(3, false); },
        [data] {
            VTVector* buffer = data->array.GetDataPtr();
            for (int i = 0; i < pointCount; ++i) {
                buffer[i].x *= 3;
                buffer[i].y *= 3;
                buffer[i].z *= 3;
            }
        });

    addClaim(
        claims, "VTVectorArray::Sum", fill, [data] { sink = data->array.Sum(0, -1, false).Length(); },
        [data] {
            const VTVector* buffer = data->array.GetDataPtr();
            VTVector sum(0, 0, 0);
            for (int i = 0; i < pointCount; ++i) {
                sum.x += buffer[i].x;
                sum.y += buffer[i].y;
                sum.z += buffer[i].z;
            }
            sink = sum.Length();
        });
}

} // namespace

int main(int argc, char** argv) {
    orvbench::Claims claims;
    addNumbers<VTIntArray, int>(claims, "VTIntArray");
    addNumbers<VTFloatArray, float>(claims, "VTFloatArray");
    addNumbers<VTRealArray, double>(claims, "VTRealArray");
    addFloating<VTFloatArray, float>(claims, "VTFloatArray", VT_UNDEFINED_FLOAT_LIMIT);
    addFloating<VTRealArray, double>(claims, "VTRealArray", VT_UNDEFINED_DOUBLE_LIMIT);
    addPoints<VTVectorArray, VTVector, double>(claims, "VTVectorArray");
    addPoints<VTVectorFloatArray, VTVectorFloat, float>(claims, "VTVectorFloatArray");
    addVectors(claims);
    return claims.run(argc, argv);
}
