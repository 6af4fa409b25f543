// Products of matrices and quaternions, conversion between them, and inversion, compared with GLM.
#include <quillmarsh/mathtools/quaternion.h>

#include <benchmark/benchmark.h>
#include <glm/glm.hpp>
#include <glm/gtc/quaternion.hpp>

#include <array>
#include <random>

namespace quillmarsh::benchmarks
{
namespace
{

// Too many values for the registers, few enough for the first cache.
constexpr std::size_t s_numValues = 64;

/// The same numbers for both libraries, as values of type T.
template<typename T>
std::array<T, s_numValues> MakeValues(unsigned int seed)
{
    std::mt19937 engine(seed);
    std::uniform_real_distribution<float> numbers(-1.0f, 1.0f);
    std::array<T, s_numValues> values;
    for (T &value : values)
    {
        for (std::size_t i = 0; i < sizeof(T) / sizeof(float); ++i)
            reinterpret_cast<float *>(&value)[i] = numbers(engine);
    }
    return values;
}

template<typename Result, typename Operand, typename Operation>
void Run(benchmark::State &state, Operation operation)
{
    std::array<Operand, s_numValues> const a = MakeValues<Operand>(1);
    std::array<Operand, s_numValues> const b = MakeValues<Operand>(2);
    std::array<Result, s_numValues> results;
    for (auto _ : state)
    {
        for (std::size_t i = 0; i < s_numValues; ++i)
        {
            operation(results[i], a[i], b[i]);
            // One operation at a time, as in programs: the compiler must not vectorise across the values.
            benchmark::DoNotOptimize(results[i]);
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(s_numValues));
}

template<typename T>
void Product(benchmark::State &state)
{
    Run<T, T>(state, [](T &result, T const &a, T const &b) { result = a * b; });
}

void QuatToMatrix(benchmark::State &state)
{
    Run<mat3, quat>(state, [](mat3 &result, quat const &a, quat const &) { a.ToRotationMatrixMV(result); });
}

void PeerQuatToMatrix(benchmark::State &state)
{
    Run<glm::mat3, glm::quat>(state, [](glm::mat3 &result, glm::quat const &a, glm::quat const &)
                              { result = glm::mat3_cast(a); });
}

void QuatToMatrix4(benchmark::State &state)
{
    Run<mat4, quat>(state, [](mat4 &result, quat const &a, quat const &) { a.ToRotationMatrixMV(result); });
}

void PeerQuatToMatrix4(benchmark::State &state)
{
    Run<glm::mat4, glm::quat>(state, [](glm::mat4 &result, glm::quat const &a, glm::quat const &)
                              { result = glm::mat4_cast(a); });
}

void Inversion(benchmark::State &state)
{
    Run<mat4, mat4>(state, [](mat4 &result, mat4 const &a, mat4 const &) { result.Inverse(a); });
}

void PeerInversion(benchmark::State &state)
{
    Run<glm::mat4, glm::mat4>(state, [](glm::mat4 &result, glm::mat4 const &a, glm::mat4 const &)
                              { result = glm::inverse(a); });
}

BENCHMARK(Product<mat4>)->Name("math/mat4_product");
BENCHMARK(Product<glm::mat4>)->Name("peer/glm_mat4_product");
BENCHMARK(Product<quat>)->Name("math/quat_product");
BENCHMARK(Product<glm::quat>)->Name("peer/glm_quat_product");
BENCHMARK(QuatToMatrix)->Name("math/quat_to_mat3");
BENCHMARK(PeerQuatToMatrix)->Name("peer/glm_quat_to_mat3");
BENCHMARK(QuatToMatrix4)->Name("math/quat_to_mat4");
BENCHMARK(PeerQuatToMatrix4)->Name("peer/glm_quat_to_mat4");
BENCHMARK(Inversion)->Name("math/mat4_inversion");
BENCHMARK(PeerInversion)->Name("peer/glm_mat4_inversion");

} // namespace
} // namespace quillmarsh::benchmarks
