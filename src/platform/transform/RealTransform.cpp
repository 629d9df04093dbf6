#include "platform/transform/RealTransform.h"

#include <cassert>
#include <fftw3.h>
#include <map>
#include <mutex>
#include <new>

namespace orvane {

namespace {

struct Free
{
    void operator()(void* memory) const { fftw_free(memory); }
};

/// Memory as the library's fastest instructions need it aligned.
template <typename Value>
std::unique_ptr<Value[], Free> allocate(std::size_t count)
{
    auto* memory = static_cast<Value*>(fftw_malloc(sizeof(Value) * count));
    if (memory == nullptr)
        throw std::bad_alloc();
    std::uninitialized_value_construct_n(memory, count);
    return std::unique_ptr<Value[], Free>(memory);
}

fftw_complex* asLibrary(std::complex<double>* values)
{
    // The library's complex number and the standard's are laid out alike by the word of both.
    return reinterpret_cast<fftw_complex*>(values);
}

} // namespace

struct RealTransform::Plan
{
    explicit Plan(fftw_plan made)
        : handle(made)
    {
    }

    ~Plan() { fftw_destroy_plan(handle); }

    Plan(const Plan&) = delete;
    Plan& operator=(const Plan&) = delete;

    fftw_plan handle;
};

struct RealTransform::Room::Buffers
{
    std::size_t length;
    std::unique_ptr<double[], Free> samples = allocate<double>(length);
    std::unique_ptr<std::complex<double>[], Free> bins = allocate<std::complex<double>>(length / 2 + 1);
};

RealTransform::Room::Room(const RealTransform& transform)
    : buffers_(new Buffers{.length = transform.length()})
{
}

RealTransform::Room::~Room() = default;
RealTransform::Room::Room(Room&&) noexcept = default;
RealTransform::Room& RealTransform::Room::operator=(Room&&) noexcept = default;

std::span<double> RealTransform::Room::samples() const
{
    return {buffers_->samples.get(), buffers_->length};
}

std::span<const std::complex<double>> RealTransform::Room::bins() const
{
    return {buffers_->bins.get(), buffers_->length / 2};
}

RealTransform::RealTransform(std::size_t length, std::unique_ptr<Plan> plan)
    : length_(length)
    , plan_(std::move(plan))
{
}

RealTransform::~RealTransform() = default;

const RealTransform* RealTransform::ofLength(std::size_t length)
{
    assert(length >= 2 && length % 2 == 0);
    // The library plans on one thread at a time, whatever the length.
    static std::mutex planning;
    static std::map<std::size_t, std::unique_ptr<RealTransform>> transforms;
    const std::scoped_lock lock(planning);
    std::unique_ptr<RealTransform>& transform = transforms[length];
    if (!transform) {
        const auto samples = allocate<double>(length);
        const auto bins = allocate<std::complex<double>>(length / 2 + 1);
        if (fftw_plan plan = fftw_plan_dft_r2c_1d(int(length), samples.get(), asLibrary(bins.get()),
                                                  FFTW_ESTIMATE | FFTW_PRESERVE_INPUT))
            transform.reset(new RealTransform(length, std::make_unique<Plan>(plan)));
    }
    return transform.get();
}

void RealTransform::run(Room& room) const
{
    assert(room.buffers_->length == length_);
    std::complex<double>* bins = room.buffers_->bins.get();
    fftw_execute_dft_r2c(plan_->handle, room.buffers_->samples.get(), asLibrary(bins));
    bins[0].imag(bins[length_ / 2].real());
}

} // namespace orvane
