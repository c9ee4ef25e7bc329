<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja" sourcelanguage="en">
<context>
    <name>CanvasView</name>
    <message>
        <source>Canvas</source>
        <translation>キャンバス</translation>
    </message>
    <message>
        <source>The layers as they look. Arrow keys move what is selected.</source>
        <translation>レイヤーの見た目です。矢印キーで選択したものを動かせます。</translation>
    </message>
    <message>
        <source>Move</source>
        <translation>移動</translation>
    </message>
</context>
<context>
    <name>ColourButton</name>
    <message>
        <source>none</source>
        <translation>なし</translation>
    </message>
    <message>
        <source>%1 – Delete removes it</source>
        <translation>%1 – Delete キーで削除</translation>
    </message>
</context>
<context>
    <name>ContentSection</name>
    <message>
        <source>Content</source>
        <translation>内容</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>テキスト</translation>
    </message>
    <message>
        <source>Picture</source>
        <translation>画像</translation>
    </message>
    <message>
        <source>No picture</source>
        <translation>画像なし</translation>
    </message>
    <message>
        <source>Choose a picture…</source>
        <translation>画像を選択…</translation>
    </message>
    <message>
        <source>Choose a picture</source>
        <translation>画像を選択</translation>
    </message>
    <message>
        <source>Pictures (*.png *.jpg *.jpeg *.gif *.webp *.bmp)</source>
        <translation>画像 (*.png *.jpg *.jpeg *.gif *.webp *.bmp)</translation>
    </message>
</context>
<context>
    <name>DataMenu</name>
    <message>
        <source>Fill with &amp;Data</source>
        <translation>データを流し込む(&amp;D)</translation>
    </message>
    <message>
        <source>No Plug-in Supplies Data</source>
        <translation>データを提供するプラグインはありません</translation>
    </message>
</context>
<context>
    <name>DocumentFiles</name>
    <message>
        <source>Save Document</source>
        <translation>書類を保存</translation>
    </message>
    <message>
        <source>Documents (*.json)</source>
        <translation>書類 (*.json)</translation>
    </message>
    <message>
        <source>“%1” is open in another window. Close that window first, or choose another name.</source>
        <translation>「%1」は別のウインドウで開いています。先にそのウインドウを閉じるか、別の名前を選んでください。</translation>
    </message>
    <message>
        <source>The document was not saved.</source>
        <translation>書類は保存されませんでした。</translation>
    </message>
    <message>
        <source>Save the changes to “%1”?</source>
        <translation>「%1」への変更を保存しますか？</translation>
    </message>
    <message>
        <source>They are lost otherwise.</source>
        <translation>保存しないと失われます。</translation>
    </message>
</context>
<context>
    <name>DocumentMenus</name>
    <message>
        <source>&amp;File</source>
        <translation>ファイル(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;New</source>
        <translation>新規(&amp;N)</translation>
    </message>
    <message>
        <source>&amp;Open…</source>
        <translation>開く…(&amp;O)</translation>
    </message>
    <message>
        <source>Open &amp;Recent</source>
        <translation>最近使った書類(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>保存(&amp;S)</translation>
    </message>
    <message>
        <source>Save &amp;As…</source>
        <translation>別名で保存…(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>閉じる(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>終了(&amp;Q)</translation>
    </message>
    <message>
        <source>No Documents</source>
        <translation>書類なし</translation>
    </message>
    <message>
        <source>&amp;Clear</source>
        <translation>消去(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Plugins</source>
        <translation>プラグイン(&amp;P)</translation>
    </message>
    <message>
        <source>Install Plug-in…</source>
        <translation>プラグインをインストール…</translation>
    </message>
    <message>
        <source>Show Plug-ins Folder</source>
        <translation>プラグインフォルダーを表示</translation>
    </message>
    <message>
        <source>Reload Plug-ins</source>
        <translation>プラグインを再読み込み</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>編集(&amp;E)</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>取り消す</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>やり直す</translation>
    </message>
    <message>
        <source>&amp;Duplicate</source>
        <translation>複製(&amp;D)</translation>
    </message>
    <message>
        <source>De&amp;lete</source>
        <translation>削除(&amp;L)</translation>
    </message>
    <message>
        <source>Select &amp;All</source>
        <translation>すべてを選択(&amp;A)</translation>
    </message>
    <message>
        <source>Select &amp;Nothing</source>
        <translation>選択を解除(&amp;N)</translation>
    </message>
    <message>
        <source>&amp;Insert</source>
        <translation>挿入(&amp;I)</translation>
    </message>
    <message>
        <source>&amp;Rectangle</source>
        <translation>長方形(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Oval</source>
        <translation>楕円(&amp;O)</translation>
    </message>
    <message>
        <source>&amp;Text</source>
        <translation>テキスト(&amp;T)</translation>
    </message>
    <message>
        <source>&amp;Image</source>
        <translation>画像(&amp;I)</translation>
    </message>
    <message>
        <source>&amp;Arrange</source>
        <translation>配置(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;Group</source>
        <translation>グループ化(&amp;G)</translation>
    </message>
    <message>
        <source>&amp;Ungroup</source>
        <translation>グループ解除(&amp;U)</translation>
    </message>
    <message>
        <source>Bring to &amp;Front</source>
        <translation>最前面へ(&amp;F)</translation>
    </message>
    <message>
        <source>Bring For&amp;ward</source>
        <translation>前面へ(&amp;W)</translation>
    </message>
    <message>
        <source>Send &amp;Backward</source>
        <translation>背面へ(&amp;B)</translation>
    </message>
    <message>
        <source>Send to Bac&amp;k</source>
        <translation>最背面へ(&amp;K)</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>表示(&amp;V)</translation>
    </message>
    <message>
        <source>Zoom &amp;In</source>
        <translation>拡大(&amp;I)</translation>
    </message>
    <message>
        <source>Zoom &amp;Out</source>
        <translation>縮小(&amp;O)</translation>
    </message>
    <message>
        <source>&amp;Actual Size</source>
        <translation>実際のサイズ(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;Fit in Window</source>
        <translation>ウインドウに合わせる(&amp;F)</translation>
    </message>
    <message>
        <source>Fit &amp;Selection</source>
        <translation>選択範囲に合わせる(&amp;S)</translation>
    </message>
    <message>
        <source>A&amp;ppearance</source>
        <translation>外観(&amp;P)</translation>
    </message>
    <message>
        <source>&amp;System</source>
        <translation>システム(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Light</source>
        <translation>ライト(&amp;L)</translation>
    </message>
    <message>
        <source>&amp;Dark</source>
        <translation>ダーク(&amp;D)</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>ヘルプ(&amp;H)</translation>
    </message>
    <message>
        <source>&amp;About Korvan</source>
        <translation>Korvan について(&amp;A)</translation>
    </message>
    <message>
        <source>About Korvan</source>
        <translation>Korvan について</translation>
    </message>
    <message>
        <source>The reference host of KorvanPluginManager, as version %1 of the application.</source>
        <translation>KorvanPluginManager のリファレンスアプリケーション（バージョン %1 として動作）。</translation>
    </message>
    <message>
        <source>Tools</source>
        <translation>ツール</translation>
    </message>
    <message>
        <source>&amp;Minimize</source>
        <translation>しまう(&amp;M)</translation>
    </message>
    <message>
        <source>Plug-ins…</source>
        <translation>プラグイン…</translation>
    </message>
    <message>
        <source>Console</source>
        <translation>コンソール</translation>
    </message>
    <message>
        <source>Plug-ins… (%1 disabled)</source>
        <translation>プラグイン…（%1 個無効）</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>カット(&amp;T)</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>コピー(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>ペースト(&amp;P)</translation>
    </message>
</context>
<context>
    <name>DocumentSession</name>
    <message>
        <source>Untitled</source>
        <translation>名称未設定</translation>
    </message>
</context>
<context>
    <name>DocumentWindow</name>
    <message>
        <source>Layers</source>
        <translation>レイヤー</translation>
    </message>
    <message>
        <source>Inspector</source>
        <translation>インスペクター</translation>
    </message>
</context>
<context>
    <name>ErrorIndicator</name>
    <message>
        <source>Errors: %1</source>
        <translation>エラー：%1 件</translation>
    </message>
</context>
<context>
    <name>GeneralSection</name>
    <message>
        <source>Layer</source>
        <translation>レイヤー</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名前</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>名前を変更</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>種類</translation>
    </message>
    <message>
        <source>X</source>
        <translation>X</translation>
    </message>
    <message>
        <source>Horizontal position</source>
        <translation>水平位置</translation>
    </message>
    <message>
        <source>Y</source>
        <translation>Y</translation>
    </message>
    <message>
        <source>Vertical position</source>
        <translation>垂直位置</translation>
    </message>
    <message>
        <source>W</source>
        <translation>幅</translation>
    </message>
    <message>
        <source>Width</source>
        <translation>幅</translation>
    </message>
    <message>
        <source>H</source>
        <translation>高</translation>
    </message>
    <message>
        <source>Height</source>
        <translation>高さ</translation>
    </message>
    <message>
        <source>Frame</source>
        <translation>フレーム</translation>
    </message>
    <message>
        <source>%1 layers</source>
        <translation>%1 個のレイヤー</translation>
    </message>
</context>
<context>
    <name>HostApplication</name>
    <message>
        <source>Start without plug-ins?</source>
        <translation>プラグインなしで起動しますか？</translation>
    </message>
    <message>
        <source>Safe Mode</source>
        <translation>セーフモード</translation>
    </message>
    <message>
        <source>Load Plug-ins</source>
        <translation>プラグインを読み込む</translation>
    </message>
    <message>
        <source>The document was not opened.</source>
        <translation>書類は開かれませんでした。</translation>
    </message>
    <message>
        <source>Open Document</source>
        <translation>書類を開く</translation>
    </message>
    <message>
        <source>Documents (*.json)</source>
        <translation>書類 (*.json)</translation>
    </message>
    <message>
        <source>Korvan has ended unexpectedly while plug-ins were loading the last time. In safe mode no plug-in is enabled, so that you can remove the one that is to blame.</source>
        <translation>前回、プラグインの読み込み中に Korvan が予期せず終了しました。セーフモードではプラグインがすべて無効になるので、原因のプラグインを取り除くことができます。</translation>
    </message>
</context>
<context>
    <name>Inspector</name>
    <message>
        <source>Nothing is selected.</source>
        <translation>何も選択されていません。</translation>
    </message>
    <message>
        <source>Inspector</source>
        <translation>インスペクター</translation>
    </message>
</context>
<context>
    <name>InspectorSection</name>
    <message>
        <source>Style</source>
        <translation>スタイル</translation>
    </message>
</context>
<context>
    <name>JSONTree</name>
    <message>
        <source>Key</source>
        <translation>キー</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>値</translation>
    </message>
</context>
<context>
    <name>LayerTexts</name>
    <message>
        <source>Move</source>
        <translation>移動</translation>
    </message>
    <message>
        <source>Resize</source>
        <translation>サイズ変更</translation>
    </message>
    <message>
        <source>Change</source>
        <translation>変更</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>テキスト</translation>
    </message>
    <message>
        <source>Rectangle</source>
        <translation>長方形</translation>
    </message>
    <message>
        <source>Oval</source>
        <translation>楕円</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>画像</translation>
    </message>
    <message>
        <source>Group</source>
        <translation>グループ</translation>
    </message>
    <message>
        <source>Insert %1</source>
        <translation>%1を挿入</translation>
    </message>
    <message>
        <source>Duplicate</source>
        <translation>複製</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>削除</translation>
    </message>
    <message>
        <source>Ungroup</source>
        <translation>グループ解除</translation>
    </message>
    <message>
        <source>Arrange</source>
        <translation>配置</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>ペースト</translation>
    </message>
</context>
<context>
    <name>LayerTreeModel</name>
    <message>
        <source>Rename</source>
        <translation>名前を変更</translation>
    </message>
    <message>
        <source>Move Layers</source>
        <translation>レイヤーを移動</translation>
    </message>
</context>
<context>
    <name>LayersPanel</name>
    <message>
        <source>Layers</source>
        <translation>レイヤー</translation>
    </message>
    <message>
        <source>All layers of the document, topmost first.</source>
        <translation>書類のすべてのレイヤーです。最前面から並びます。</translation>
    </message>
</context>
<context>
    <name>PluginDataSection</name>
    <message>
        <source>Plug-in Data</source>
        <translation>プラグインのデータ</translation>
    </message>
    <message>
        <source>No plug-in keeps anything on this layer.</source>
        <translation>このレイヤーにデータを保存しているプラグインはありません。</translation>
    </message>
    <message>
        <source>Plug-in data of the layer</source>
        <translation>レイヤーのプラグインデータ</translation>
    </message>
</context>
<context>
    <name>PluginsMenuController</name>
    <message>
        <source>No Plug-ins</source>
        <translation>プラグインなし</translation>
    </message>
</context>
<context>
    <name>StyleSection</name>
    <message>
        <source>Style</source>
        <translation>スタイル</translation>
    </message>
    <message>
        <source>Opacity</source>
        <translation>不透明度</translation>
    </message>
    <message>
        <source>Fill</source>
        <translation>塗り</translation>
    </message>
    <message>
        <source>Border</source>
        <translation>境界線</translation>
    </message>
    <message>
        <source>Border width</source>
        <translation>線の太さ</translation>
    </message>
    <message>
        <source>Corner radius</source>
        <translation>角の半径</translation>
    </message>
    <message>
        <source>Font</source>
        <translation>フォント</translation>
    </message>
    <message>
        <source>Font size</source>
        <translation>文字サイズ</translation>
    </message>
    <message>
        <source>Font weight</source>
        <translation>フォントの太さ</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>細字</translation>
    </message>
    <message>
        <source>Regular</source>
        <translation>標準</translation>
    </message>
    <message>
        <source>Medium</source>
        <translation>中字</translation>
    </message>
    <message>
        <source>Bold</source>
        <translation>太字</translation>
    </message>
    <message>
        <source>Weight</source>
        <translation>太さ</translation>
    </message>
    <message>
        <source>Alignment</source>
        <translation>揃え</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>左</translation>
    </message>
    <message>
        <source>Centre</source>
        <translation>中央</translation>
    </message>
    <message>
        <source>Right</source>
        <translation>右</translation>
    </message>
</context>
<context>
    <name>WindowMenu</name>
    <message>
        <source>&amp;Window</source>
        <translation>ウインドウ(&amp;W)</translation>
    </message>
</context>
<context>
    <name>ZoomControl</name>
    <message>
        <source>Zoom</source>
        <translation>ズーム</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>Fit in Window</source>
        <translation>ウインドウに合わせる</translation>
    </message>
</context>
</TS>
