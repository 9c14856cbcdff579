// Device SDK: holder of the active backend.
#include "Backend.h"
#include "sim/SimulatedCard.h"

#include <atomic>

namespace zelk {

Backend::~Backend() = default;

namespace {

std::shared_ptr<Backend> g_backend;

std::shared_ptr<Backend> defaultBackend()
{
    static const std::shared_ptr<Backend> backend = sim::SimulatedCard::asBackend();
    return backend;
}

} // namespace

void setBackend(std::shared_ptr<Backend> backend)
{
    std::atomic_store(&g_backend, std::move(backend));
}

std::shared_ptr<Backend> activeBackend()
{
    std::shared_ptr<Backend> backend = std::atomic_load(&g_backend);
    return backend ? backend : defaultBackend();
}

} // namespace zelk
