#pragma once

namespace tensio {

// What the user reads when nothing comes of a save or a print.
constexpr auto saveFailedMessage = "保存に失敗しました。";
constexpr auto paperTooSmallMessage
    = "用紙が小さすぎるため、測定結果を配置できません。\n用紙サイズか余白を変更してください。";

} // namespace tensio
