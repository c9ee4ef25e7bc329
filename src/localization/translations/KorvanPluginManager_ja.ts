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
</context>
</TS>
