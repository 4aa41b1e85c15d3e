#pragma once

namespace tensio {

// Messages for a failed save, print or opening.
constexpr auto saveFailedMessage = "保存に失敗しました。";
constexpr auto printFailedMessage = "印刷に失敗しました。";
constexpr auto paperTooSmallMessage
    = "用紙が小さすぎるため、測定結果を配置できません。\n用紙サイズか余白を変更してください。";
constexpr auto unreadableMessage = "この測定は読み込めませんでした。管理者に知らせてください。";

// On pages and in files of simulated readings.
constexpr auto simulatedMessage = "模擬装置の値です（実際の測定ではありません）";

} // namespace tensio
