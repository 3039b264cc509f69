// The installed Profile object factory and the trapped automation call.
#include "tax/profile_automation.hpp"

#include "base/failure.hpp"

namespace lf {
namespace {

std::shared_ptr<ProfileObjectFactory>& installedFactory() {
  static std::shared_ptr<ProfileObjectFactory> factory;
  return factory;
}

}  // namespace

ProfileObjectFactory* profileObjectFactory() {
  return installedFactory().get();
}

void setProfileObjectFactory(std::shared_ptr<ProfileObjectFactory> factory) {
  installedFactory() = std::move(factory);
}

void trapAutomationError(AutomationError& err, const std::function<void()>& call) {
  err.clear();
  try {
    call();
  } catch (const Failure& failure) {
    err.number = failure.number() == 0 ? kProfileUnspecifiedError : failure.number();
    err.description = failure.what();
  } catch (const std::exception& failure) {
    err.number = kProfileUnspecifiedError;
    err.description = failure.what();
  }
}

}  // namespace lf
