<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_Hans" sourcelanguage="en">
<context>
    <name>CanvasView</name>
    <message>
        <source>Canvas</source>
        <translation>画布</translation>
    </message>
    <message>
        <source>The layers as they look. Arrow keys move what is selected.</source>
        <translation>图层的外观。方向键移动所选内容。</translation>
    </message>
    <message>
        <source>Move</source>
        <translation>移动</translation>
    </message>
</context>
<context>
    <name>ColourButton</name>
    <message>
        <source>none</source>
        <translation>无</translation>
    </message>
    <message>
        <source>%1 – Delete removes it</source>
        <translation>%1 – 按 Delete 键移除</translation>
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
        <translation>文本</translation>
    </message>
    <message>
        <source>Picture</source>
        <translation>图片</translation>
    </message>
    <message>
        <source>No picture</source>
        <translation>无图片</translation>
    </message>
    <message>
        <source>Choose a picture…</source>
        <translation>选取图片…</translation>
    </message>
    <message>
        <source>Choose a picture</source>
        <translation>选取图片</translation>
    </message>
    <message>
        <source>Pictures (*.png *.jpg *.jpeg *.gif *.webp *.bmp)</source>
        <translation>图片 (*.png *.jpg *.jpeg *.gif *.webp *.bmp)</translation>
    </message>
</context>
<context>
    <name>DataMenu</name>
    <message>
        <source>Fill with &amp;Data</source>
        <translation>填充数据(&amp;D)</translation>
    </message>
    <message>
        <source>No Plug-in Supplies Data</source>
        <translation>没有提供数据的插件</translation>
    </message>
</context>
<context>
    <name>DocumentFiles</name>
    <message>
        <source>Save Document</source>
        <translation>保存文稿</translation>
    </message>
    <message>
        <source>Documents (*.json)</source>
        <translation>文稿 (*.json)</translation>
    </message>
    <message>
        <source>“%1” is open in another window. Close that window first, or choose another name.</source>
        <translation>“%1”已在另一个窗口中打开。请先关闭该窗口，或选择其他名称。</translation>
    </message>
    <message>
        <source>The document was not saved.</source>
        <translation>文稿未保存。</translation>
    </message>
    <message>
        <source>Save the changes to “%1”?</source>
        <translation>要保存对“%1”的更改吗？</translation>
    </message>
    <message>
        <source>They are lost otherwise.</source>
        <translation>否则更改会丢失。</translation>
    </message>
</context>
<context>
    <name>DocumentMenus</name>
    <message>
        <source>&amp;File</source>
        <translation>文件(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;New</source>
        <translation>新建(&amp;N)</translation>
    </message>
    <message>
        <source>&amp;Open…</source>
        <translation>打开…(&amp;O)</translation>
    </message>
    <message>
        <source>Open &amp;Recent</source>
        <translation>打开最近使用(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>保存(&amp;S)</translation>
    </message>
    <message>
        <source>Save &amp;As…</source>
        <translation>另存为…(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>关闭(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>退出(&amp;Q)</translation>
    </message>
    <message>
        <source>No Documents</source>
        <translation>无文稿</translation>
    </message>
    <message>
        <source>&amp;Clear</source>
        <translation>清除(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Plugins</source>
        <translation>插件(&amp;P)</translation>
    </message>
    <message>
        <source>Install Plug-in…</source>
        <translation>安装插件…</translation>
    </message>
    <message>
        <source>Show Plug-ins Folder</source>
        <translation>显示插件文件夹</translation>
    </message>
    <message>
        <source>Reload Plug-ins</source>
        <translation>重新载入插件</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>编辑(&amp;E)</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>撤销</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>重做</translation>
    </message>
    <message>
        <source>&amp;Duplicate</source>
        <translation>复制(&amp;D)</translation>
    </message>
    <message>
        <source>De&amp;lete</source>
        <translation>删除(&amp;L)</translation>
    </message>
    <message>
        <source>Select &amp;All</source>
        <translation>全选(&amp;A)</translation>
    </message>
    <message>
        <source>Select &amp;Nothing</source>
        <translation>取消选择(&amp;N)</translation>
    </message>
    <message>
        <source>&amp;Insert</source>
        <translation>插入(&amp;I)</translation>
    </message>
    <message>
        <source>&amp;Rectangle</source>
        <translation>矩形(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Oval</source>
        <translation>椭圆(&amp;O)</translation>
    </message>
    <message>
        <source>&amp;Text</source>
        <translation>文本(&amp;T)</translation>
    </message>
    <message>
        <source>&amp;Image</source>
        <translation>图像(&amp;I)</translation>
    </message>
    <message>
        <source>&amp;Arrange</source>
        <translation>排列(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;Group</source>
        <translation>编组(&amp;G)</translation>
    </message>
    <message>
        <source>&amp;Ungroup</source>
        <translation>取消编组(&amp;U)</translation>
    </message>
    <message>
        <source>Bring to &amp;Front</source>
        <translation>置于顶层(&amp;F)</translation>
    </message>
    <message>
        <source>Bring For&amp;ward</source>
        <translation>上移一层(&amp;W)</translation>
    </message>
    <message>
        <source>Send &amp;Backward</source>
        <translation>下移一层(&amp;B)</translation>
    </message>
    <message>
        <source>Send to Bac&amp;k</source>
        <translation>置于底层(&amp;K)</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>显示(&amp;V)</translation>
    </message>
    <message>
        <source>Zoom &amp;In</source>
        <translation>放大(&amp;I)</translation>
    </message>
    <message>
        <source>Zoom &amp;Out</source>
        <translation>缩小(&amp;O)</translation>
    </message>
    <message>
        <source>&amp;Actual Size</source>
        <translation>实际大小(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;Fit in Window</source>
        <translation>适合窗口(&amp;F)</translation>
    </message>
    <message>
        <source>Fit &amp;Selection</source>
        <translation>适合所选内容(&amp;S)</translation>
    </message>
    <message>
        <source>A&amp;ppearance</source>
        <translation>外观(&amp;P)</translation>
    </message>
    <message>
        <source>&amp;System</source>
        <translation>系统(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Light</source>
        <translation>浅色(&amp;L)</translation>
    </message>
    <message>
        <source>&amp;Dark</source>
        <translation>深色(&amp;D)</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>帮助(&amp;H)</translation>
    </message>
    <message>
        <source>&amp;About Korvan</source>
        <translation>关于 Korvan(&amp;A)</translation>
    </message>
    <message>
        <source>About Korvan</source>
        <translation>关于 Korvan</translation>
    </message>
    <message>
        <source>The reference host of KorvanPluginManager, as version %1 of the application.</source>
        <translation>KorvanPluginManager 的参考应用程序，作为应用程序的 %1 版本。</translation>
    </message>
    <message>
        <source>Tools</source>
        <translation>工具</translation>
    </message>
    <message>
        <source>&amp;Minimize</source>
        <translation>最小化(&amp;M)</translation>
    </message>
    <message>
        <source>Plug-ins…</source>
        <translation>插件…</translation>
    </message>
    <message>
        <source>Console</source>
        <translation>控制台</translation>
    </message>
    <message>
        <source>Plug-ins… (%1 disabled)</source>
        <translation>插件…（已停用 %1 个）</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>剪切(&amp;T)</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>拷贝(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>粘贴(&amp;P)</translation>
    </message>
</context>
<context>
    <name>DocumentSession</name>
    <message>
        <source>Untitled</source>
        <translation>未命名</translation>
    </message>
</context>
<context>
    <name>DocumentWindow</name>
    <message>
        <source>Layers</source>
        <translation>图层</translation>
    </message>
    <message>
        <source>Inspector</source>
        <translation>检查器</translation>
    </message>
</context>
<context>
    <name>ErrorIndicator</name>
    <message>
        <source>Errors: %1</source>
        <translation>错误：%1</translation>
    </message>
</context>
<context>
    <name>GeneralSection</name>
    <message>
        <source>Layer</source>
        <translation>图层</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>重新命名</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>类型</translation>
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
        <translation>宽</translation>
    </message>
    <message>
        <source>Width</source>
        <translation>宽度</translation>
    </message>
    <message>
        <source>H</source>
        <translation>高</translation>
    </message>
    <message>
        <source>Height</source>
        <translation>高度</translation>
    </message>
    <message>
        <source>Frame</source>
        <translation>框架</translation>
    </message>
    <message>
        <source>%1 layers</source>
        <translation>%1 个图层</translation>
    </message>
</context>
<context>
    <name>HostApplication</name>
    <message>
        <source>Start without plug-ins?</source>
        <translation>要在没有插件的情况下启动吗？</translation>
    </message>
    <message>
        <source>Safe Mode</source>
        <translation>安全模式</translation>
    </message>
    <message>
        <source>Load Plug-ins</source>
        <translation>载入插件</translation>
    </message>
    <message>
        <source>The document was not opened.</source>
        <translation>文稿未打开。</translation>
    </message>
    <message>
        <source>Open Document</source>
        <translation>打开文稿</translation>
    </message>
    <message>
        <source>Documents (*.json)</source>
        <translation>文稿 (*.json)</translation>
    </message>
    <message>
        <source>Korvan has ended unexpectedly while plug-ins were loading the last time. In safe mode no plug-in is enabled, so that you can remove the one that is to blame.</source>
        <translation>Korvan 上次在载入插件时意外退出。安全模式下不会启用任何插件，以便您移除有问题的插件。</translation>
    </message>
</context>
<context>
    <name>Inspector</name>
    <message>
        <source>Nothing is selected.</source>
        <translation>未选择任何内容。</translation>
    </message>
    <message>
        <source>Inspector</source>
        <translation>检查器</translation>
    </message>
</context>
<context>
    <name>InspectorSection</name>
    <message>
        <source>Style</source>
        <translation>样式</translation>
    </message>
</context>
<context>
    <name>JSONTree</name>
    <message>
        <source>Key</source>
        <translation>键</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>值</translation>
    </message>
</context>
<context>
    <name>LayerTexts</name>
    <message>
        <source>Move</source>
        <translation>移动</translation>
    </message>
    <message>
        <source>Resize</source>
        <translation>调整大小</translation>
    </message>
    <message>
        <source>Change</source>
        <translation>更改</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>文本</translation>
    </message>
    <message>
        <source>Rectangle</source>
        <translation>矩形</translation>
    </message>
    <message>
        <source>Oval</source>
        <translation>椭圆</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>图像</translation>
    </message>
    <message>
        <source>Group</source>
        <translation>编组</translation>
    </message>
    <message>
        <source>Insert %1</source>
        <translation>插入%1</translation>
    </message>
    <message>
        <source>Duplicate</source>
        <translation>复制</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>Ungroup</source>
        <translation>取消编组</translation>
    </message>
    <message>
        <source>Arrange</source>
        <translation>排列</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>粘贴</translation>
    </message>
</context>
<context>
    <name>LayerTreeModel</name>
    <message>
        <source>Rename</source>
        <translation>重新命名</translation>
    </message>
    <message>
        <source>Move Layers</source>
        <translation>移动图层</translation>
    </message>
</context>
<context>
    <name>LayersPanel</name>
    <message>
        <source>Layers</source>
        <translation>图层</translation>
    </message>
    <message>
        <source>All layers of the document, topmost first.</source>
        <translation>文稿的所有图层，最上层在最前。</translation>
    </message>
</context>
<context>
    <name>PluginDataSection</name>
    <message>
        <source>Plug-in Data</source>
        <translation>插件数据</translation>
    </message>
    <message>
        <source>No plug-in keeps anything on this layer.</source>
        <translation>没有插件在此图层上保存数据。</translation>
    </message>
    <message>
        <source>Plug-in data of the layer</source>
        <translation>图层的插件数据</translation>
    </message>
</context>
<context>
    <name>PluginsMenuController</name>
    <message>
        <source>No Plug-ins</source>
        <translation>无插件</translation>
    </message>
</context>
<context>
    <name>StyleSection</name>
    <message>
        <source>Style</source>
        <translation>样式</translation>
    </message>
    <message>
        <source>Opacity</source>
        <translation>不透明度</translation>
    </message>
    <message>
        <source>Fill</source>
        <translation>填充</translation>
    </message>
    <message>
        <source>Border</source>
        <translation>边框</translation>
    </message>
    <message>
        <source>Border width</source>
        <translation>边框宽度</translation>
    </message>
    <message>
        <source>Corner radius</source>
        <translation>圆角半径</translation>
    </message>
    <message>
        <source>Font</source>
        <translation>字体</translation>
    </message>
    <message>
        <source>Font size</source>
        <translation>字号</translation>
    </message>
    <message>
        <source>Font weight</source>
        <translation>字体粗细</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>细体</translation>
    </message>
    <message>
        <source>Regular</source>
        <translation>常规</translation>
    </message>
    <message>
        <source>Medium</source>
        <translation>中等</translation>
    </message>
    <message>
        <source>Bold</source>
        <translation>粗体</translation>
    </message>
    <message>
        <source>Weight</source>
        <translation>粗细</translation>
    </message>
    <message>
        <source>Alignment</source>
        <translation>对齐</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>左</translation>
    </message>
    <message>
        <source>Centre</source>
        <translation>居中</translation>
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
        <translation>窗口(&amp;W)</translation>
    </message>
</context>
<context>
    <name>ZoomControl</name>
    <message>
        <source>Zoom</source>
        <translation>缩放</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>Fit in Window</source>
        <translation>适合窗口</translation>
    </message>
</context>
</TS>
