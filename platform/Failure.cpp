#include "platform/Failure.h"

namespace health {

Text describeCurrentFailure()
{
    try {
        throw;
    } catch (const Failure& failure) {
        return failure.description();
    } catch (const std::exception& exception) {
        return widen(exception.what());
    } catch (...) {
        return L"Unknown failure.";
    }
}

}
