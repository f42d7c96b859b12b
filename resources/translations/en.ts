<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>com.blipsy.prefpanel</name>
    <message>
        <source>newabb</source>
        <translation>my new phrase</translation>
    </message>
    <message>
        <source>Applications</source>
        <translation>Applications</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Search</translation>
    </message>
    <message>
        <source>Other…</source>
        <translation>Other…</translation>
    </message>
    <message>
        <source>“%1” is a folder.</source>
        <translation>“%1” is a folder.</translation>
    </message>
    <message>
        <source>Choose another name.</source>
        <translation>Choose another name.</translation>
    </message>
    <message>
        <source>“%1” cannot be saved here.</source>
        <translation>“%1” cannot be saved here.</translation>
    </message>
    <message>
        <source>Choose another name or another folder.</source>
        <translation>Choose another name or another folder.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>“%1” already exists.</source>
        <translation>“%1” already exists.</translation>
    </message>
    <message>
        <source>Do you want to replace it?</source>
        <translation>Do you want to replace it?</translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>Replace</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Confirm remove</source>
        <translation>Confirm remove</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Remove</translation>
    </message>
    <message>
        <source>Choose a Sound</source>
        <translation>Choose a Sound</translation>
    </message>
    <message>
        <source>Sound for:</source>
        <translation>Sound for:</translation>
    </message>
    <message>
        <source>Play the selected sound</source>
        <translation>Play the selected sound</translation>
    </message>
    <message>
        <source>&amp;Play</source>
        <translation>&amp;Play</translation>
    </message>
    <message>
        <source>Stop the sound that is playing</source>
        <translation>Stop the sound that is playing</translation>
    </message>
    <message>
        <source>S&amp;top</source>
        <translation>S&amp;top</translation>
    </message>
    <message>
        <source>&amp;Favourite folders:</source>
        <translation>&amp;Favourite folders:</translation>
    </message>
    <message>
        <source>Favourite folders</source>
        <translation>Favourite folders</translation>
    </message>
    <message>
        <source>Add the selected folder to the favourite folders</source>
        <translation>Add the selected folder to the favourite folders</translation>
    </message>
    <message>
        <source>&amp;Add to Favourites</source>
        <translation>&amp;Add to Favourites</translation>
    </message>
    <message>
        <source>(None)</source>
        <translation>(None)</translation>
    </message>
    <message>
        <source>Hot Key</source>
        <translation>Hot Key</translation>
    </message>
    <message>
        <source>Press the keys for “%@”.</source>
        <translation>Press the keys for “%@”.</translation>
    </message>
    <message>
        <source>Key combination: %@</source>
        <translation>Key combination: %@</translation>
    </message>
    <message>
        <source>Key recorder</source>
        <translation>Key recorder</translation>
    </message>
    <message>
        <source>Every key that you press is recorded, but for Return, which presses OK, and Escape, which presses Cancel.</source>
        <translation>Every key that you press is recorded, but for Return, which presses OK, and Escape, which presses Cancel.</translation>
    </message>
    <message>
        <source>The last key press counts. Return is OK, Escape is Cancel.</source>
        <translation>The last key press counts. Return is OK, Escape is Cancel.</translation>
    </message>
    <message>
        <source>Leave this hot key without a key combination</source>
        <translation>Leave this hot key without a key combination</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Clear</translation>
    </message>
    <message>
        <source>Keep the hot key as it was</source>
        <translation>Keep the hot key as it was</translation>
    </message>
    <message>
        <source>Use the key combination shown</source>
        <translation>Use the key combination shown</translation>
    </message>
    <message>
        <source>%d clippings</source>
        <translation>%d clippings</translation>
    </message>
    <message>
        <source>(Picture)</source>
        <translation>(Picture)</translation>
    </message>
    <message>
        <source>%@
This sound cannot be found.</source>
        <translation>%@
This sound cannot be found.</translation>
    </message>
    <message>
        <source>In every application: click to choose one</source>
        <translation>In every application: click to choose one</translation>
    </message>
    <message>
        <source>Play the sound</source>
        <translation>Play the sound</translation>
    </message>
    <message>
        <source>Show the sound in the file manager</source>
        <translation>Show the sound in the file manager</translation>
    </message>
    <message>
        <source>Take the sound away</source>
        <translation>Take the sound away</translation>
    </message>
    <message>
        <source>Choose a sound</source>
        <translation>Choose a sound</translation>
    </message>
    <message>
        <source>New Sounds Document</source>
        <translation>New Sounds Document</translation>
    </message>
    <message>
        <source>new sound set</source>
        <translation>new sound set</translation>
    </message>
    <message>
        <source>Open a Sounds Document or Import Phrases</source>
        <translation>Open a Sounds Document or Import Phrases</translation>
    </message>
    <message>
        <source>Save the Imported Phrases</source>
        <translation>Save the Imported Phrases</translation>
    </message>
    <message>
        <source>Importing phrases…</source>
        <translation>Importing phrases…</translation>
    </message>
    <message>
        <source>Blipsy</source>
        <translation>Blipsy</translation>
    </message>
    <message>
        <source>This abbreviation is associated with &apos;</source>
        <translation>This abbreviation is associated with &apos;</translation>
    </message>
    <message>
        <source>&apos; and will only expand in that application.</source>
        <translation>&apos; and will only expand in that application.</translation>
    </message>
    <message>
        <source>
Do you wish to clear the association?</source>
        <translation>
Do you wish to clear the association?</translation>
    </message>
    <message>
        <source>Phrase</source>
        <translation>Phrase</translation>
    </message>
    <message>
        <source>Application</source>
        <translation>Application</translation>
    </message>
    <message>
        <source>Sound</source>
        <translation>Sound</translation>
    </message>
    <message>
        <source>Page %1 of %2</source>
        <translation>Page %1 of %2</translation>
    </message>
    <message>
        <source>The phrases cannot be printed.</source>
        <translation>The phrases cannot be printed.</translation>
    </message>
    <message>
        <source>Choose another printer or file.</source>
        <translation>Choose another printer or file.</translation>
    </message>
    <message>
        <source>Set volume:</source>
        <translation>Set volume:</translation>
    </message>
    <message>
        <source>my new phrase</source>
        <translation>my new phrase</translation>
    </message>
    <message>
        <source>Are you sure you wish to remove this phrase?
You will not be able to undo this operation.</source>
        <translation>Are you sure you wish to remove this phrase?
You will not be able to undo this operation.</translation>
    </message>
    <message>
        <source>Do you wish to save the changes you made to &apos;</source>
        <translation>Do you wish to save the changes you made to &apos;</translation>
    </message>
    <message>
        <source>&apos;?</source>
        <translation>&apos;?</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Discard</translation>
    </message>
    <message>
        <source>Select a phrase to see its text.</source>
        <translation>Select a phrase to see its text.</translation>
    </message>
    <message>
        <source>&amp;Sounds document:</source>
        <translation>&amp;Sounds document:</translation>
    </message>
    <message>
        <source>Print…</source>
        <translation>Print…</translation>
    </message>
    <message>
        <source>Open…</source>
        <translation>Open…</translation>
    </message>
    <message>
        <source>New sounds document…</source>
        <translation>New sounds document…</translation>
    </message>
    <message>
        <source>Sounds document</source>
        <translation>Sounds document</translation>
    </message>
    <message>
        <source>Number of phrases</source>
        <translation>Number of phrases</translation>
    </message>
    <message>
        <source>Phrases</source>
        <translation>Phrases</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Play</translation>
    </message>
    <message>
        <source>Show in the file manager</source>
        <translation>Show in the file manager</translation>
    </message>
    <message>
        <source>Choose or take away the sound</source>
        <translation>Choose or take away the sound</translation>
    </message>
    <message>
        <source>No phrases</source>
        <translation>No phrases</translation>
    </message>
    <message>
        <source>Add a new phrase to the list</source>
        <translation>Add a new phrase to the list</translation>
    </message>
    <message>
        <source>&amp;Add Phrase</source>
        <translation>&amp;Add Phrase</translation>
    </message>
    <message>
        <source>Remove the selected phrase from the list</source>
        <translation>Remove the selected phrase from the list</translation>
    </message>
    <message>
        <source>&amp;Remove Phrase</source>
        <translation>&amp;Remove Phrase</translation>
    </message>
    <message>
        <source>Print Phrases</source>
        <translation>Print Phrases</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Preview</translation>
    </message>
    <message>
        <source>&amp;Print…</source>
        <translation>&amp;Print…</translation>
    </message>
    <message>
        <source>Are you sure you wish to remove this sound?</source>
        <translation>Are you sure you wish to remove this sound?</translation>
    </message>
    <message>
        <source>
You will not be able to undo this operation.</source>
        <translation>
You will not be able to undo this operation.</translation>
    </message>
    <message>
        <source>cannot find assigned sound!</source>
        <translation>cannot find assigned sound!</translation>
    </message>
    <message>
        <source>Show Only This Category</source>
        <translation>Show Only This Category</translation>
    </message>
    <message>
        <source>Show Events with This Sound</source>
        <translation>Show Events with This Sound</translation>
    </message>
    <message>
        <source>Show All Events</source>
        <translation>Show All Events</translation>
    </message>
    <message>
        <source>Alert volume:</source>
        <translation>Alert volume:</translation>
    </message>
    <message>
        <source>Event volume:</source>
        <translation>Event volume:</translation>
    </message>
    <message>
        <source>Search events, categories and sounds</source>
        <translation>Search events, categories and sounds</translation>
    </message>
    <message>
        <source>Search events</source>
        <translation>Search events</translation>
    </message>
    <message>
        <source>Show only events whose name, category or sound contains this text</source>
        <translation>Show only events whose name, category or sound contains this text</translation>
    </message>
    <message>
        <source>Sound events</source>
        <translation>Sound events</translation>
    </message>
    <message>
        <source>Event</source>
        <translation>Event</translation>
    </message>
    <message>
        <source>Category</source>
        <translation>Category</translation>
    </message>
    <message>
        <source>Filter</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>No events</source>
        <translation>No events</translation>
    </message>
    <message>
        <source>Volume</source>
        <translation>Volume</translation>
    </message>
    <message>
        <source>The volume of the selected event; with no event selected, of everything</source>
        <translation>The volume of the selected event; with no event selected, of everything</translation>
    </message>
    <message>
        <source>Do not expand</source>
        <translation>Do not expand</translation>
    </message>
    <message>
        <source>Expand using a document…</source>
        <translation>Expand using a document…</translation>
    </message>
    <message>
        <source>Choose a Sounds Document</source>
        <translation>Choose a Sounds Document</translation>
    </message>
    <message>
        <source>Choose an Application</source>
        <translation>Choose an Application</translation>
    </message>
    <message>
        <source>missing file</source>
        <translation>missing file</translation>
    </message>
    <message>
        <source>do not expand</source>
        <translation>do not expand</translation>
    </message>
    <message>
        <source>expand using: %@</source>
        <translation>expand using: %@</translation>
    </message>
    <message>
        <source>Choose what is done in this application</source>
        <translation>Choose what is done in this application</translation>
    </message>
    <message>
        <source>In these applications Blipsy uses another document, or does not expand phrases at all.</source>
        <translation>In these applications Blipsy uses another document, or does not expand phrases at all.</translation>
    </message>
    <message>
        <source>Icon</source>
        <translation>Icon</translation>
    </message>
    <message>
        <source>What is done in it</source>
        <translation>What is done in it</translation>
    </message>
    <message>
        <source>Choose what is done</source>
        <translation>Choose what is done</translation>
    </message>
    <message>
        <source>No applications: phrases work the same everywhere</source>
        <translation>No applications: phrases work the same everywhere</translation>
    </message>
    <message>
        <source>Choose an application and add it to the list</source>
        <translation>Choose an application and add it to the list</translation>
    </message>
    <message>
        <source>&amp;Add…</source>
        <translation>&amp;Add…</translation>
    </message>
    <message>
        <source>Take the selected application off the list</source>
        <translation>Take the selected application off the list</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>&amp;Remove</translation>
    </message>
    <message>
        <source>Really make this plain text?</source>
        <translation>Really make this plain text?</translation>
    </message>
    <message>
        <source>Once you save the clipping as plain text, you won&apos;t be able to retrieve any attributes such as font, style or colour.</source>
        <translation>Once you save the clipping as plain text, you won&apos;t be able to retrieve any attributes such as font, style or colour.</translation>
    </message>
    <message>
        <source>Make Plain</source>
        <translation>Make Plain</translation>
    </message>
    <message>
        <source>Keep Rich</source>
        <translation>Keep Rich</translation>
    </message>
    <message>
        <source>Short date as in the settings</source>
        <translation>Short date as in the settings</translation>
    </message>
    <message>
        <source>Long date as in the settings</source>
        <translation>Long date as in the settings</translation>
    </message>
    <message>
        <source>Time as in the settings</source>
        <translation>Time as in the settings</translation>
    </message>
    <message>
        <source>Insertion point</source>
        <translation>Insertion point</translation>
    </message>
    <message>
        <source>Move left</source>
        <translation>Move left</translation>
    </message>
    <message>
        <source>Move up</source>
        <translation>Move up</translation>
    </message>
    <message>
        <source>Move right</source>
        <translation>Move right</translation>
    </message>
    <message>
        <source>Move down</source>
        <translation>Move down</translation>
    </message>
    <message>
        <source>Keep the trigger character</source>
        <translation>Keep the trigger character</translation>
    </message>
    <message>
        <source>Leave out the trigger character</source>
        <translation>Leave out the trigger character</translation>
    </message>
    <message>
        <source>– Dash</source>
        <translation>– Dash</translation>
    </message>
    <message>
        <source>• Bullet</source>
        <translation>• Bullet</translation>
    </message>
    <message>
        <source>… Ellipsis</source>
        <translation>… Ellipsis</translation>
    </message>
    <message>
        <source>→ Arrow</source>
        <translation>→ Arrow</translation>
    </message>
    <message>
        <source>Date and Time</source>
        <translation>Date and Time</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>Date</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>Formatting</source>
        <translation>Formatting</translation>
    </message>
    <message>
        <source>Font</source>
        <translation>Font</translation>
    </message>
    <message>
        <source>Font size</source>
        <translation>Font size</translation>
    </message>
    <message>
        <source>Font size in points</source>
        <translation>Font size in points</translation>
    </message>
    <message>
        <source>B</source>
        <translation>B</translation>
    </message>
    <message>
        <source>Bold</source>
        <translation>Bold</translation>
    </message>
    <message>
        <source>I</source>
        <translation>I</translation>
    </message>
    <message>
        <source>Italic</source>
        <translation>Italic</translation>
    </message>
    <message>
        <source>U</source>
        <translation>U</translation>
    </message>
    <message>
        <source>Underline</source>
        <translation>Underline</translation>
    </message>
    <message>
        <source>S</source>
        <translation>S</translation>
    </message>
    <message>
        <source>Strikethrough</source>
        <translation>Strikethrough</translation>
    </message>
    <message>
        <source>Text color</source>
        <translation>Text color</translation>
    </message>
    <message>
        <source>Align left</source>
        <translation>Align left</translation>
    </message>
    <message>
        <source>Center</source>
        <translation>Center</translation>
    </message>
    <message>
        <source>Align right</source>
        <translation>Align right</translation>
    </message>
    <message>
        <source>Justify</source>
        <translation>Justify</translation>
    </message>
    <message>
        <source>Kind of text</source>
        <translation>Kind of text</translation>
    </message>
    <message>
        <source>&amp;Plain text</source>
        <translation>&amp;Plain text</translation>
    </message>
    <message>
        <source>Ri&amp;ch text</source>
        <translation>Ri&amp;ch text</translation>
    </message>
    <message>
        <source>&amp;Insert</source>
        <translation>&amp;Insert</translation>
    </message>
    <message>
        <source>Insert a date, a time or another phrase</source>
        <translation>Insert a date, a time or another phrase</translation>
    </message>
    <message>
        <source>&amp;Formatting</source>
        <translation>&amp;Formatting</translation>
    </message>
    <message>
        <source>Insert a marker or a symbol</source>
        <translation>Insert a marker or a symbol</translation>
    </message>
    <message>
        <source>Ctrl+S</source>
        <translation>Ctrl+S</translation>
    </message>
    <message>
        <source>Save the text of this phrase (Ctrl+S)</source>
        <translation>Save the text of this phrase (Ctrl+S)</translation>
    </message>
    <message>
        <source>Text of the phrase</source>
        <translation>Text of the phrase</translation>
    </message>
    <message>
        <source>Blipsy 1.x Help</source>
        <translation>Blipsy 1.x Help</translation>
    </message>
    <message>
        <source>Add a Clipping</source>
        <translation>Add a Clipping</translation>
    </message>
    <message>
        <source>Edit Clippings</source>
        <translation>Edit Clippings</translation>
    </message>
    <message>
        <source>Pause/Resume</source>
        <translation>Pause/Resume</translation>
    </message>
    <message>
        <source>Record another key combination. It is stored, but does nothing in this session, where no program can reserve keys for itself.</source>
        <translation>Record another key combination. It is stored, but does nothing in this session, where no program can reserve keys for itself.</translation>
    </message>
    <message>
        <source>Helper</source>
        <translation>Helper</translation>
    </message>
    <message>
        <source>Start the helper now and at every login</source>
        <translation>Start the helper now and at every login</translation>
    </message>
    <message>
        <source>&amp;On</source>
        <translation>&amp;On</translation>
    </message>
    <message>
        <source>Stop the helper and no longer start it at login</source>
        <translation>Stop the helper and no longer start it at login</translation>
    </message>
    <message>
        <source>O&amp;ff</source>
        <translation>O&amp;ff</translation>
    </message>
    <message>
        <source>Hot keys</source>
        <translation>Hot keys</translation>
    </message>
    <message>
        <source>&amp;Add a Clipping:</source>
        <translation>&amp;Add a Clipping:</translation>
    </message>
    <message>
        <source>Record another key combination</source>
        <translation>Record another key combination</translation>
    </message>
    <message>
        <source>Hot key of Add a Clipping: %@</source>
        <translation>Hot key of Add a Clipping: %@</translation>
    </message>
    <message>
        <source>&amp;Edit Clippings:</source>
        <translation>&amp;Edit Clippings:</translation>
    </message>
    <message>
        <source>Hot key of Edit Clippings: %@</source>
        <translation>Hot key of Edit Clippings: %@</translation>
    </message>
    <message>
        <source>&amp;Pause/Resume:</source>
        <translation>&amp;Pause/Resume:</translation>
    </message>
    <message>
        <source>Hot key of Pause/Resume: %@</source>
        <translation>Hot key of Pause/Resume: %@</translation>
    </message>
    <message>
        <source>Sounds and talk</source>
        <translation>Sounds and talk</translation>
    </message>
    <message>
        <source>Hear a sound at once when you give it to an event</source>
        <translation>Hear a sound at once when you give it to an event</translation>
    </message>
    <message>
        <source>Play sound as I drop it on event list:</source>
        <translation>Play sound as I drop it on event list:</translation>
    </message>
    <message>
        <source>&amp;Idle-talk interval in minutes:</source>
        <translation>&amp;Idle-talk interval in minutes:</translation>
    </message>
    <message>
        <source>How long you are idle before the helper talks to you</source>
        <translation>How long you are idle before the helper talks to you</translation>
    </message>
    <message>
        <source>Idle-talk interval in minutes</source>
        <translation>Idle-talk interval in minutes</translation>
    </message>
    <message>
        <source>Change the idle-talk interval</source>
        <translation>Change the idle-talk interval</translation>
    </message>
    <message>
        <source>Trigger characters</source>
        <translation>Trigger characters</translation>
    </message>
    <message>
        <source>A phrase is complete, and its sound is played, when one of these characters is typed after it:</source>
        <translation>A phrase is complete, and its sound is played, when one of these characters is typed after it:</translation>
    </message>
    <message>
        <source>Tab</source>
        <translation>Tab</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>Space</translation>
    </message>
    <message>
        <source>Return</source>
        <translation>Return</translation>
    </message>
    <message>
        <source>No-break space</source>
        <translation>No-break space</translation>
    </message>
    <message>
        <source>Escape</source>
        <translation>Escape</translation>
    </message>
    <message>
        <source>Period</source>
        <translation>Period</translation>
    </message>
    <message>
        <source>Comma</source>
        <translation>Comma</translation>
    </message>
    <message>
        <source>Semicolon</source>
        <translation>Semicolon</translation>
    </message>
    <message>
        <source>Colon</source>
        <translation>Colon</translation>
    </message>
    <message>
        <source>Exclamation mark</source>
        <translation>Exclamation mark</translation>
    </message>
    <message>
        <source>Question mark</source>
        <translation>Question mark</translation>
    </message>
    <message>
        <source>Apostrophe</source>
        <translation>Apostrophe</translation>
    </message>
    <message>
        <source>Quotation mark</source>
        <translation>Quotation mark</translation>
    </message>
    <message>
        <source>At sign</source>
        <translation>At sign</translation>
    </message>
    <message>
        <source>Left parenthesis</source>
        <translation>Left parenthesis</translation>
    </message>
    <message>
        <source>Right parenthesis</source>
        <translation>Right parenthesis</translation>
    </message>
    <message>
        <source>Left bracket</source>
        <translation>Left bracket</translation>
    </message>
    <message>
        <source>Right bracket</source>
        <translation>Right bracket</translation>
    </message>
    <message>
        <source>Left brace</source>
        <translation>Left brace</translation>
    </message>
    <message>
        <source>Right brace</source>
        <translation>Right brace</translation>
    </message>
    <message>
        <source>Slash</source>
        <translation>Slash</translation>
    </message>
    <message>
        <source>Less-than sign</source>
        <translation>Less-than sign</translation>
    </message>
    <message>
        <source>Greater-than sign</source>
        <translation>Greater-than sign</translation>
    </message>
    <message>
        <source>Hyphen</source>
        <translation>Hyphen</translation>
    </message>
    <message>
        <source>Underscore</source>
        <translation>Underscore</translation>
    </message>
    <message>
        <source>Plus sign</source>
        <translation>Plus sign</translation>
    </message>
    <message>
        <source>Equals sign</source>
        <translation>Equals sign</translation>
    </message>
    <message>
        <source>Backslash</source>
        <translation>Backslash</translation>
    </message>
    <message>
        <source>Let every character shown end a phrase</source>
        <translation>Let every character shown end a phrase</translation>
    </message>
    <message>
        <source>&amp;Select All</source>
        <translation>&amp;Select All</translation>
    </message>
    <message>
        <source>Let no character end a phrase</source>
        <translation>Let no character end a phrase</translation>
    </message>
    <message>
        <source>&amp;Deselect All</source>
        <translation>&amp;Deselect All</translation>
    </message>
    <message>
        <source>The trigger character itself:</source>
        <translation>The trigger character itself:</translation>
    </message>
    <message>
        <source>What becomes of the trigger character</source>
        <translation>What becomes of the trigger character</translation>
    </message>
    <message>
        <source>Pass it on to the application</source>
        <translation>Pass it on to the application</translation>
    </message>
    <message>
        <source>Keep it back after a phrase</source>
        <translation>Keep it back after a phrase</translation>
    </message>
    <message>
        <source>Menu▾ shows</source>
        <translation>Menu▾ shows</translation>
    </message>
    <message>
        <source>Contents of the menu</source>
        <translation>Contents of the menu</translation>
    </message>
    <message>
        <source>Commands only</source>
        <translation>Commands only</translation>
    </message>
    <message>
        <source>Sound files</source>
        <translation>Sound files</translation>
    </message>
    <message>
        <source>Phrases with their sound files</source>
        <translation>Phrases with their sound files</translation>
    </message>
    <message>
        <source>The helper is restarted to show or hide its menu</source>
        <translation>The helper is restarted to show or hide its menu</translation>
    </message>
    <message>
        <source>Nothing: no menu at all</source>
        <translation>Nothing: no menu at all</translation>
    </message>
    <message>
        <source>Order of the phrases</source>
        <translation>Order of the phrases</translation>
    </message>
    <message>
        <source>By phrase</source>
        <translation>By phrase</translation>
    </message>
    <message>
        <source>By sound file</source>
        <translation>By sound file</translation>
    </message>
    <message>
        <source>As imported</source>
        <translation>As imported</translation>
    </message>
    <message>
        <source>Announce the tracks that are played</source>
        <translation>Announce the tracks that are played</translation>
    </message>
    <message>
        <source>Announcement of tracks</source>
        <translation>Announcement of tracks</translation>
    </message>
    <message>
        <source>Never</source>
        <translation>Never</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Title</translation>
    </message>
    <message>
        <source>Title and artist</source>
        <translation>Title and artist</translation>
    </message>
    <message>
        <source>Read about the options in the help book</source>
        <translation>Read about the options in the help book</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Help</translation>
    </message>
    <message>
        <source>Events</source>
        <translation>Events</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Options</translation>
    </message>
    <message>
        <source>Sections of the settings</source>
        <translation>Sections of the settings</translation>
    </message>
    <message>
        <source>&amp;Add</source>
        <translation>&amp;Add</translation>
    </message>
    <message>
        <source>What you will type</source>
        <translation>What you will type</translation>
    </message>
    <message>
        <source>&amp;Phrase:</source>
        <translation>&amp;Phrase:</translation>
    </message>
    <message>
        <source>&amp;Text:</source>
        <translation>&amp;Text:</translation>
    </message>
    <message>
        <source>Add a Clipping…</source>
        <translation>Add a Clipping…</translation>
    </message>
    <message>
        <source>Edit Clippings…</source>
        <translation>Edit Clippings…</translation>
    </message>
    <message>
        <source>About Blipsy</source>
        <translation>About Blipsy</translation>
    </message>
    <message>
        <source>Quit Blipsy</source>
        <translation>Quit Blipsy</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Resume</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Plays short sounds while you type and work.</source>
        <translation>Plays short sounds while you type and work.</translation>
    </message>
    <message>
        <source>A phrase needs at least one character.</source>
        <translation>A phrase needs at least one character.</translation>
    </message>
    <message>
        <source>A phrase is one line of text.</source>
        <translation>A phrase is one line of text.</translation>
    </message>
    <message>
        <source>There is such a phrase already.</source>
        <translation>There is such a phrase already.</translation>
    </message>
    <message>
        <source>The sounds document cannot be read.</source>
        <translation>The sounds document cannot be read.</translation>
    </message>
    <message>
        <source>The sounds document cannot be written.</source>
        <translation>The sounds document cannot be written.</translation>
    </message>
    <message>
        <source>Blipsy is paused</source>
        <translation>Blipsy is paused</translation>
    </message>
    <message>
        <source>It is %1.</source>
        <translation>It is %1.</translation>
    </message>
    <message>
        <source>Blipsy does not see what you type</source>
        <translation>Blipsy does not see what you type</translation>
    </message>
    <message>
        <source>Hot keys of another program: %1</source>
        <translation>Hot keys of another program: %1</translation>
    </message>
    <message>
        <source>Another program holds the keys. Choose others in the settings, under Options.</source>
        <translation>Another program holds the keys. Choose others in the settings, under Options.</translation>
    </message>
    <message>
        <source>Another program holds this key combination, so that it does nothing here. Record another one.</source>
        <translation>Another program holds this key combination, so that it does nothing here. Record another one.</translation>
    </message>
    <message>
        <source>The selected text could not be read. Copy it, and paste it here.</source>
        <translation>The selected text could not be read. Copy it, and paste it here.</translation>
    </message>
    <message>
        <source>Blipsy runs outside a desktop session, and your user may not read the keyboards, so phrases and keys set nothing off.</source>
        <translation>Blipsy runs outside a desktop session, and your user may not read the keyboards, so phrases and keys set nothing off.</translation>
    </message>
    <message>
        <source>In this session programs do not see what is typed into others, so phrases and keys set nothing off.</source>
        <translation>In this session programs do not see what is typed into others, so phrases and keys set nothing off.</translation>
    </message>
    <message>
        <source>Log in to an X11 session, or let your user read the input devices (on most systems: add it to the group &quot;input&quot;, and log in again). Other events are heard all the same.</source>
        <translation>Log in to an X11 session, or let your user read the input devices (on most systems: add it to the group &quot;input&quot;, and log in again). Other events are heard all the same.</translation>
    </message>
    <message>
        <source>Blipsy cannot put texts into programs</source>
        <translation>Blipsy cannot put texts into programs</translation>
    </message>
    <message>
        <source>Only X11 sessions let one program type into others. Here phrases are not replaced by their texts, and those chosen in the menu are just heard. Log in to an X11 session to have them inserted.</source>
        <translation>Only X11 sessions let one program type into others. Here phrases are not replaced by their texts, and those chosen in the menu are just heard. Log in to an X11 session to have them inserted.</translation>
    </message>
    <message>
        <source>Save the Backup As</source>
        <translation>Save the Backup As</translation>
    </message>
    <message>
        <source>Go back to “%1” of %2?</source>
        <translation>Go back to “%1” of %2?</translation>
    </message>
    <message>
        <source>What the document is now is kept as a backup, too.</source>
        <translation>What the document is now is kept as a backup, too.</translation>
    </message>
    <message>
        <source>Go Back</source>
        <translation>Go Back</translation>
    </message>
</context>
</TS>
