<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja_JP" sourcelanguage="en">
<context>
    <name>Localizable</name>
    <message>
        <source>untitled script</source>
        <translation>名称未設定スクリプト</translation>
    </message>
    <message>
        <source>The extension “%@” is not compatible with your computer’s CPU architecture. Please contact this extension’s developer directly for assistance.</source>
        <extracomment>The message of an alert, %@ is the name of a plug-in.</extracomment>
        <translation>拡張機能「%@」は、お使いのコンピューターのCPUアーキテクチャに対応していません。この拡張機能の開発元に直接お問い合わせください。</translation>
    </message>
    <message>
        <source>Unsupported plug-in</source>
        <translation>対応していないプラグイン</translation>
    </message>
    <message>
        <source>untitled</source>
        <translation>名称未設定</translation>
    </message>
    <message>
        <source>The transfer from &quot;%1&quot; has failed</source>
        <translation>「%1」からの転送に失敗しました</translation>
    </message>
    <message>
        <source>The transfer from &quot;%1&quot; was cancelled</source>
        <translation>「%1」からの転送はキャンセルされました</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a valid URL</source>
        <translation>「%1」は有効なURLではありません</translation>
    </message>
    <message>
        <source>The server &quot;%1&quot; has not answered in time</source>
        <translation>サーバー「%1」から時間内に応答がありませんでした</translation>
    </message>
    <message>
        <source>The URL of &quot;%1&quot; is neither http nor https</source>
        <translation>「%1」のURLはhttpでもhttpsでもありません</translation>
    </message>
    <message>
        <source>A server named &quot;%1&quot; cannot be found</source>
        <translation>「%1」という名前のサーバーが見つかりません</translation>
    </message>
    <message>
        <source>The server &quot;%1&quot; cannot be reached</source>
        <translation>サーバー「%1」に接続できません</translation>
    </message>
    <message>
        <source>The connection to &quot;%1&quot; was lost</source>
        <translation>「%1」への接続が切断されました</translation>
    </message>
    <message>
        <source>The server &quot;%1&quot; redirects too many times</source>
        <translation>サーバー「%1」によるリダイレクトの回数が多すぎます</translation>
    </message>
    <message>
        <source>The server &quot;%1&quot; has sent an answer that is not HTTP</source>
        <translation>サーバー「%1」からHTTPではない応答が送られました</translation>
    </message>
    <message>
        <source>What the server &quot;%1&quot; has sent cannot be decoded</source>
        <translation>サーバー「%1」から送られたデータをデコードできません</translation>
    </message>
    <message>
        <source>The connection to &quot;%1&quot; would not be encrypted, which is not allowed</source>
        <translation>「%1」への接続は暗号化されないため、許可されていません</translation>
    </message>
    <message>
        <source>The server &quot;%1&quot; sends more than is allowed</source>
        <translation>サーバー「%1」から許可された量を超えるデータが送られました</translation>
    </message>
    <message>
        <source>A secure connection to &quot;%1&quot; cannot be made</source>
        <translation>「%1」への安全な接続を確立できません</translation>
    </message>
    <message>
        <source>The certificate of the server &quot;%1&quot; is not trusted</source>
        <translation>サーバー「%1」の証明書は信頼されていません</translation>
    </message>
    <message>
        <source>No file can be created for the download from &quot;%1&quot;</source>
        <translation>「%1」からのダウンロード用のファイルを作成できません</translation>
    </message>
    <message>
        <source>The download from &quot;%1&quot; cannot be written to its file</source>
        <translation>「%1」からのダウンロードをファイルに書き込めません</translation>
    </message>
    <message>
        <source>%1.</source>
        <extracomment>Ends a sentence of this table that has no full stop (%1).</extracomment>
        <translation>%1。</translation>
    </message>
    <message>
        <source>%1: %2.</source>
        <extracomment>A sentence of this table that has no full stop (%1), and what exactly has happened (%2).</extracomment>
        <translation>%1：%2。</translation>
    </message>
    <message>
        <source>Decompressing zip file failed.</source>
        <translation>ZIPファイルの展開に失敗しました。</translation>
    </message>
    <message>
        <source>Could not create file handle for writing decompressed data to.</source>
        <translation>展開したデータを書き込むためのファイルを開けませんでした。</translation>
    </message>
    <message>
        <source>Could not create file to decompress to.</source>
        <translation>展開先のファイルを作成できませんでした。</translation>
    </message>
    <message>
        <source>Invalid file path within zip archive.</source>
        <translation>ZIPアーカイブ内に無効なファイルパスがあります。</translation>
    </message>
    <message>
        <source>Can not confirm that the created intermediate folders are sub folders of the destination folder.</source>
        <translation>作成した中間フォルダーが展開先フォルダーのサブフォルダーであることを確認できません。</translation>
    </message>
    <message>
        <source>Could not create intermediate subfolders when decompressing plugin archive.</source>
        <translation>プラグインのアーカイブの展開中に、中間サブフォルダーを作成できませんでした。</translation>
    </message>
    <message>
        <source>Failure to install plugin.</source>
        <translation>プラグインのインストールに失敗しました。</translation>
    </message>
    <message>
        <source>Plugin update already downloaded.</source>
        <translation>プラグインのアップデートはすでにダウンロードされています。</translation>
    </message>
    <message>
        <source>Could not obtain url to download plugin update.</source>
        <translation>プラグインのアップデートをダウンロードするためのURLを取得できませんでした。</translation>
    </message>
    <message>
        <source>The plugin&apos;s identifier and version do not name a folder inside the plugins warehouse.</source>
        <extracomment>The plugins warehouse is a folder of the application, where downloaded updates wait for their installation.</extracomment>
        <translation>プラグインの識別子とバージョンが、プラグイン保管場所内のフォルダーを示していません。</translation>
    </message>
    <message>
        <source>The update feed “%1” is larger than %2 MB.</source>
        <translation>アップデートフィード「%1」のサイズが%2&#xa0;MBを超えています。</translation>
    </message>
    <message>
        <source>The update feed “%1” is not valid JSON.</source>
        <translation>アップデートフィード「%1」は有効なJSONではありません。</translation>
    </message>
    <message>
        <source>The update feed “%1” has neither a version with a download URL nor a list of items.</source>
        <translation>アップデートフィード「%1」には、ダウンロードURL付きのバージョンも項目のリストも含まれていません。</translation>
    </message>
    <message>
        <source>The update feed “%1” offers no version that can be downloaded.</source>
        <translation>アップデートフィード「%1」には、ダウンロードできるバージョンがありません。</translation>
    </message>
    <message>
        <source>Application</source>
        <translation>アプリケーション</translation>
    </message>
    <message>
        <source>Log entries</source>
        <translation>ログの項目</translation>
    </message>
    <message>
        <source>Console</source>
        <translation>コンソール</translation>
    </message>
    <message>
        <source>Show entries of</source>
        <translation>項目を表示するプラグイン</translation>
    </message>
    <message>
        <source>All plug-ins</source>
        <translation>すべてのプラグイン</translation>
    </message>
    <message>
        <source>Lowest level</source>
        <translation>最低レベル</translation>
    </message>
    <message>
        <source>All levels</source>
        <translation>すべてのレベル</translation>
    </message>
    <message>
        <source>Warnings and errors</source>
        <translation>警告とエラー</translation>
    </message>
    <message>
        <source>Errors</source>
        <translation>エラー</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>検索</translation>
    </message>
    <message>
        <source>Search entries</source>
        <translation>項目を検索</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>コピー</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>消去</translation>
    </message>
    <message>
        <source>Selected entry</source>
        <translation>選択した項目</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <extracomment>Of entries in a list that is filtered.</extracomment>
        <translation>%2件中%1件</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>エラー</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>警告</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>メッセージ</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>時刻</translation>
    </message>
    <message>
        <source>Plug-in</source>
        <translation>プラグイン</translation>
    </message>
    <message>
        <source>Place</source>
        <translation>場所</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>Stop “%1”</source>
        <translation>「%1」を停止</translation>
    </message>
    <message>
        <source>Running commands</source>
        <translation>実行中のコマンド</translation>
    </message>
    <message>
        <source>No commands are running</source>
        <translation>実行中のコマンドはありません</translation>
    </message>
    <message>
        <source>Running commands: %1</source>
        <translation>実行中のコマンド：%1</translation>
    </message>
    <message>
        <source>A script has been running for a long time.</source>
        <translation>スクリプトの実行に時間がかかっています。</translation>
    </message>
    <message>
        <source>“%1” has computed for %2 seconds. Meanwhile the application cannot do anything else.</source>
        <translation>「%1」は%2秒間処理を続けています。その間、アプリケーションはほかの操作を受け付けられません。</translation>
    </message>
    <message>
        <source>&amp;Stop</source>
        <translation>停止(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Keep Waiting</source>
        <translation>待つ(&amp;K)</translation>
    </message>
    <message>
        <source>Dismiss</source>
        <translation>閉じる</translation>
    </message>
    <message>
        <source>Commands</source>
        <translation>コマンド</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>コマンド</translation>
    </message>
    <message>
        <source>Shortcut</source>
        <translation>ショートカット</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>バージョン%1</translation>
    </message>
    <message>
        <source>For versions %1 to %2 of this application</source>
        <translation>このアプリケーションのバージョン%1から%2用</translation>
    </message>
    <message>
        <source>For version %1 of this application and later</source>
        <translation>このアプリケーションのバージョン%1以降用</translation>
    </message>
    <message>
        <source>Open &amp;Homepage</source>
        <translation>ホームページを開く(&amp;H)</translation>
    </message>
    <message>
        <source>Select a plug-in to see what it does.</source>
        <translation>プラグインを選択すると、その内容が表示されます。</translation>
    </message>
    <message>
        <source>This version is known not to work with this application.</source>
        <translation>このバージョンは、このアプリケーションで動作しないことがわかっています。</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>編集(&amp;E)</translation>
    </message>
    <message>
        <source>&amp;Show in Folder</source>
        <translation>フォルダーに表示(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Remove…</source>
        <translation>取り除く(&amp;R)…</translation>
    </message>
    <message>
        <source>“%1” is installed already.</source>
        <translation>「%1」はすでにインストールされています。</translation>
    </message>
    <message>
        <source>There is no plug-in in “%1”.</source>
        <translation>「%1」にはプラグインが含まれていません。</translation>
    </message>
    <message>
        <source>The manifest of “%1” is missing or cannot be read.</source>
        <translation>「%1」のマニフェストがないか、読み込めません。</translation>
    </message>
    <message>
        <source>The manifest of “%1” names no identifier.</source>
        <translation>「%1」のマニフェストに識別子がありません。</translation>
    </message>
    <message>
        <source>Incompatible</source>
        <translation>互換性なし</translation>
    </message>
    <message>
        <source>Update available</source>
        <translation>アップデートあり</translation>
    </message>
    <message>
        <source>Updating</source>
        <translation>アップデート中</translation>
    </message>
    <message>
        <source>Update failed</source>
        <translation>アップデート失敗</translation>
    </message>
    <message>
        <source>Running</source>
        <extracomment>A badge of a plug-in one of whose commands goes on.</extracomment>
        <translation>実行中</translation>
    </message>
    <message>
        <source>enabled</source>
        <translation>有効</translation>
    </message>
    <message>
        <source>disabled</source>
        <translation>無効</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>キャンセル(&amp;C)</translation>
    </message>
    <message>
        <source>Version %1 is installed. The file holds version %2, which is newer.</source>
        <translation>バージョン%1がインストールされています。ファイルには、それより新しいバージョン%2が含まれています。</translation>
    </message>
    <message>
        <source>The file holds the version that is installed: %1.</source>
        <translation>ファイルには、インストールされているものと同じバージョン%1が含まれています。</translation>
    </message>
    <message>
        <source>Version %1 is installed. The file holds version %2, which is older.</source>
        <translation>バージョン%1がインストールされています。ファイルには、それより古いバージョン%2が含まれています。</translation>
    </message>
    <message>
        <source>Remove “%1”?</source>
        <translation>「%1」を取り除きますか？</translation>
    </message>
    <message>
        <source>Its commands are stopped, and its folder is moved to the trash.</source>
        <translation>コマンドは停止され、フォルダーはゴミ箱に移動します。</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>取り除く(&amp;R)</translation>
    </message>
    <message>
        <source>Replace “%1”?</source>
        <translation>「%1」を置き換えますか？</translation>
    </message>
    <message>
        <source>&amp;Replace</source>
        <translation>置き換える(&amp;R)</translation>
    </message>
    <message>
        <source>Check for U&amp;pdates</source>
        <translation>アップデートを確認(&amp;P)</translation>
    </message>
    <message>
        <source>Update &amp;All</source>
        <translation>すべてアップデート(&amp;A)</translation>
    </message>
    <message>
        <source>Cancel A&amp;ll</source>
        <translation>すべてキャンセル(&amp;L)</translation>
    </message>
    <message>
        <source>&amp;Disable all plug-ins</source>
        <translation>すべてのプラグインを無効にする(&amp;D)</translation>
    </message>
    <message>
        <source>Plug-ins</source>
        <translation>プラグイン</translation>
    </message>
    <message>
        <source>Search plug-ins</source>
        <translation>プラグインを検索</translation>
    </message>
    <message>
        <source>&amp;Install</source>
        <translation>インストール(&amp;I)</translation>
    </message>
    <message>
        <source>From an &amp;Archive…</source>
        <translation>アーカイブから(&amp;A)…</translation>
    </message>
    <message>
        <source>From a &amp;Folder…</source>
        <translation>フォルダーから(&amp;F)…</translation>
    </message>
    <message>
        <source>Installed plug-ins</source>
        <translation>インストール済みのプラグイン</translation>
    </message>
    <message>
        <source>Install Plug-ins</source>
        <translation>プラグインをインストール</translation>
    </message>
    <message>
        <source>Archives of plug-ins (*.zip)</source>
        <translation>プラグインのアーカイブ (*.zip)</translation>
    </message>
    <message>
        <source>Plug-ins that were disabled because they do not work with this application: %1</source>
        <translation>このアプリケーションで動作しないため無効にしたプラグイン：%1</translation>
    </message>
    <message>
        <source>Looking for updates…</source>
        <translation>アップデートを探しています…</translation>
    </message>
    <message>
        <source>Plug-ins: %1  ·  Updates: %2</source>
        <translation>プラグイン：%1  ·  アップデート：%2</translation>
    </message>
    <message>
        <source>All plug-ins are disabled. Enabling one of them leaves the others disabled for good.</source>
        <translation>すべてのプラグインが無効になっています。いずれかを有効にすると、ほかのプラグインは無効のままになります。</translation>
    </message>
    <message>
        <source>“%1” is installed, in version %2.</source>
        <translation>「%1」のバージョン%2をインストールしました。</translation>
    </message>
    <message>
        <source>No editor for plug-ins could be started. The plug-in’s folder is shown instead.</source>
        <translation>プラグインのエディターを起動できませんでした。代わりにプラグインのフォルダーを表示します。</translation>
    </message>
    <message>
        <source>“%1” cannot be moved to the trash: %2</source>
        <translation>「%1」をゴミ箱に移動できません：%2</translation>
    </message>
    <message>
        <source>Downloading…</source>
        <translation>ダウンロード中…</translation>
    </message>
    <message>
        <source>Looking for an update…</source>
        <translation>アップデートを探しています…</translation>
    </message>
    <message>
        <source>Version %1 is available.</source>
        <translation>バージョン%1を利用できます。</translation>
    </message>
    <message>
        <source>Waits for other downloads.</source>
        <translation>ほかのダウンロードを待っています。</translation>
    </message>
    <message>
        <source>Installing…</source>
        <translation>インストール中…</translation>
    </message>
    <message>
        <source>Updated to version %1.</source>
        <translation>バージョン%1にアップデートしました。</translation>
    </message>
    <message>
        <source>&amp;Update</source>
        <translation>アップデート(&amp;U)</translation>
    </message>
    <message>
        <source>Progress of the download</source>
        <translation>ダウンロードの進行状況</translation>
    </message>
    <message>
        <source>&amp;Try Again</source>
        <translation>再試行(&amp;T)</translation>
    </message>
    <message>
        <source>The update is not offered any more.</source>
        <translation>このアップデートは提供されなくなりました。</translation>
    </message>
    <message>
        <source>The archive of the update is empty or cannot be read.</source>
        <translation>アップデートのアーカイブが空であるか、読み込めません。</translation>
    </message>
    <message>
        <source>“%1” cannot be copied: %2</source>
        <translation>「%1」をコピーできません：%2</translation>
    </message>
    <message>
        <source>“%1” is no archive, is empty or cannot be read.</source>
        <translation>「%1」はアーカイブではないか、空であるか、読み込めません。</translation>
    </message>
    <message>
        <source>There is no file “%1”.</source>
        <translation>ファイル「%1」はありません。</translation>
    </message>
    <message>
        <source>“%1” is neither a plug-in nor a zip archive of one.</source>
        <translation>「%1」はプラグインでも、プラグインのZIPアーカイブでもありません。</translation>
    </message>
    <message>
        <source>“%1” holds a link that leads out of it.</source>
        <translation>「%1」には、外部を指すリンクが含まれています。</translation>
    </message>
    <message>
        <source>Enable A&amp;gain</source>
        <translation>再び有効にする(&amp;G)</translation>
    </message>
    <message>
        <source>%1 downloaded</source>
        <extracomment>%1 is what has arrived, with its unit.</extracomment>
        <translation>%1をダウンロード済み</translation>
    </message>
    <message>
        <source>%1 of %2 downloaded</source>
        <extracomment>%1 is what has arrived, %2 the whole; both with their unit.</extracomment>
        <translation>%2中%1をダウンロード済み</translation>
    </message>
    <message>
        <source>%1, %2 per second</source>
        <extracomment>%1 says what has arrived, %2 what arrives in a second, with its unit.</extracomment>
        <translation>%1、毎秒%2</translation>
    </message>
</context>
</TS>
