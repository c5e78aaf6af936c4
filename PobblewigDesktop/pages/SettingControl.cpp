#include "PobblewigDesktop/pages/SettingControl.h"

#include "PobblewigDesktop/pages/ChoiceControls.h"
#include "PobblewigDesktop/pages/TextControls.h"
#include "PobblewigDesktop/pages/ValueControls.h"
#include "foundation/Overloaded.h"

namespace pobblewig {

std::unique_ptr<SettingControl> SettingControl::make(const Setting& setting)
{
    using Control = std::unique_ptr<SettingControl>;
    const Overloaded maker {
        [](const SwitchSetting& kind) -> Control { return std::make_unique<SwitchControl>(kind); },
        [](const NumberSetting& kind) -> Control { return std::make_unique<NumberControl>(kind); },
        [](const PercentSetting& kind) -> Control {
            return std::make_unique<PercentControl>(kind);
        },
        [](const ChoiceSetting& kind) -> Control { return std::make_unique<ChoiceControl>(kind); },
        [](const ChoicesSetting& kind) -> Control {
            return std::make_unique<ChoicesControl>(kind);
        },
        [](const TextSetting& kind) -> Control { return std::make_unique<TextControl>(kind); },
        [](const ListSetting& kind) -> Control { return std::make_unique<ListControl>(kind); },
    };
    return std::visit(maker, setting.kind);
}

} // namespace pobblewig
