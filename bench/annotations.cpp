// Each generator beside its floor: allocating and freeing as many blocks of the same sizes as its
// finished annotation keeps. The annotation object itself stands outside both.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <map>
#include <memory>
#include <string>

#include "blocks.h"
#include "kinds.h"

namespace {

using namespace dorvale::bench;

BlockCount blocksOf(const AnnotationKind& generator) {
    // Once uncounted, for what a thread keeps for good after its first call.
    Ank_PMI warmUp;
    generator.build(warmUp);
    Ank_PMI pmi;
    return countBlocks([&] { generator.build(pmi); });
}

/// Blocks of given sizes, which live as long as this object. Clearing the room for them would count
/// as time that the blocks take.
// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
class Blocks {
public:
    void allocate(const std::vector<std::size_t>& sizes) {
        for (const std::size_t size : sizes) {
            blocks_[count_++] = ::operator new(size);
        }
    }

    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
    Blocks() = default;
    Blocks(const Blocks&) = delete;
    Blocks& operator=(const Blocks&) = delete;
    ~Blocks() {
        for (std::size_t i = 0; i < count_; ++i) {
            ::operator delete(blocks_[i]);
        }
    }

private:
    void* blocks_[32];
    std::size_t count_ = 0;
};

void build(benchmark::State& state, const AnnotationKind& generator) {
    while (state.KeepRunning()) {
        Ank_PMI pmi;
        generator.build(pmi);
        benchmark::DoNotOptimize(pmi);
    }
    const BlockCount blocks = blocksOf(generator);
    state.counters["blocks_taken"] =
        benchmark::Counter(static_cast<double>(blocks.taken), benchmark::Counter::kAvgThreads);
    state.counters["blocks_kept"] = benchmark::Counter(static_cast<double>(blocks.kept.size()),
                                                       benchmark::Counter::kAvgThreads);
}

void floorOf(benchmark::State& state, const AnnotationKind& generator) {
    const std::vector<std::size_t> sizes = blocksOf(generator).kept;
    while (state.KeepRunning()) {
        Blocks blocks;
        blocks.allocate(sizes);
        benchmark::DoNotOptimize(blocks);
    }
}

// Many objects stay alive from one repetition of a benchmark to the next, those of a generator
// beside the blocks of its floor, and go before another generator gets its own.
std::string owner;
std::map<std::string, std::shared_ptr<void>> populations;

template <typename T, typename Fill>
T* populationOf(const std::string& generator, const std::string& name, std::size_t size,
                Fill fill) {
    if (owner != generator) {
        populations.clear();
        owner = generator;
    }
    std::shared_ptr<void>& population = populations[name];
    if (!population) {
        const auto objects = std::shared_ptr<T[]>(new T[size]);
        std::for_each_n(objects.get(), size, fill);
        population = objects;
    }
    return static_cast<T*>(population.get());
}

/// Replaces one of many living objects, round and round.
template <typename T, typename Fill>
void replaceAmong(benchmark::State& state, const AnnotationKind& generator, const std::string& what,
                  Fill fill) {
    const auto size = static_cast<std::size_t>(state.range(0));
    T* const objects = populationOf<T>(generator.call, what + std::to_string(size), size, fill);
    std::size_t i = 0;
    while (state.KeepRunning()) {
        std::destroy_at(&objects[i]);
        fill(*std::construct_at(&objects[i]));
        i = i + 1 < size ? i + 1 : 0;
    }
}

void buildAmong(benchmark::State& state, const AnnotationKind& generator) {
    replaceAmong<Ank_PMI>(state, generator, "annotations", generator.build);
}

void floorAmong(benchmark::State& state, const AnnotationKind& generator) {
    const std::vector<std::size_t> sizes = blocksOf(generator).kept;
    replaceAmong<Blocks>(state, generator, "blocks",
                         [&](Blocks& blocks) { blocks.allocate(sizes); });
}

void buildArc(benchmark::State& state) {
    const auto radius = static_cast<float>(state.range(0));
    Ank_Ellipse circle = quarterCircle(radius);
    while (state.KeepRunning()) {
        Ank_PMI pmi;
        buildArcLength(pmi, circle, radius);
        benchmark::DoNotOptimize(pmi);
    }
}

const bool kRegistered = [] {
    for (const AnnotationKind& generator : annotationKinds()) {
        const std::string name = generator.call;
        for (const int threads : {1, 2}) {
            benchmark::RegisterBenchmark(name.c_str(), build, generator)->Threads(threads);
            benchmark::RegisterBenchmark((name + "/floor").c_str(), floorOf, generator)
                ->Threads(threads);
        }
        for (const int alive : {1000, 1000000}) {
            benchmark::RegisterBenchmark(name.c_str(), buildAmong, generator)
                ->ArgName("alive")
                ->Arg(alive);
            benchmark::RegisterBenchmark((name + "/floor").c_str(), floorAmong, generator)
                ->ArgName("alive")
                ->Arg(alive);
        }
    }
    benchmark::RegisterBenchmark("PMICreateArcDim3D", buildArc)
        ->ArgName("radius")
        ->Arg(10)
        ->Arg(1000)
        ->Arg(100000);
    return true;
}();

} // namespace
