#include "demonstration/service/FaultScript.h"

namespace orvane::demo {
namespace {

bool hasNoEnd(Fault::Kind kind)
{
    return kind == Fault::Kind::redirectLoop || kind == Fault::Kind::samePageForEver;
}

} // namespace

void FaultScript::add(const Fault& fault)
{
    const std::lock_guard guard(lock_);
    faults_.append(fault);
}

void FaultScript::clear()
{
    const std::lock_guard guard(lock_);
    faults_.clear();
}

std::optional<Fault> FaultScript::take(const QByteArray& target)
{
    const std::lock_guard guard(lock_);
    for (Fault& fault : faults_) {
        if (fault.times <= 0 || !target.contains(fault.where.toUtf8()))
            continue;
        if (fault.after > 0) {
            --fault.after;
            return std::nullopt;
        }
        if (!hasNoEnd(fault.kind))
            --fault.times;
        return fault;
    }
    return std::nullopt;
}

} // namespace orvane::demo
