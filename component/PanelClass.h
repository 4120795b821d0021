#pragma once

#include "api/Component.h"
#include "api/ProgIds.h"

#include <memory>

namespace health {

class modShared;
class QtDesktop;

// The class object of the panel. Owns what all instances of the process share; exists until the library is unloaded.
class PanelClass final : public ComponentClass {
public:
    PanelClass();
    ~PanelClass();

    std::unique_ptr<ComponentInstance> create(Host& host) override;

    bool hasInstances() const { return m_instances > 0; }

private:
    class Instance;

    std::unique_ptr<QtDesktop> m_desktop;
    std::unique_ptr<modShared> m_shared;
    int m_instances = 0;
};

}
