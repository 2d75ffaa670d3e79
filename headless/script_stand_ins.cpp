// The host's scripting objects as scripts see them. Everything that leaves the script goes through
// hostCall, which takes a request as JSON text and answers with JSON text.
#include "headless/script_stand_ins.h"

namespace vellumtide::headless {

const char* const kScriptStandIns = R"js(
(function (global, hostCall) {
  'use strict';
  function ask(call, request) {
    request.call = call;
    return JSON.parse(hostCall(JSON.stringify(request)));
  }
  function text(value) { return value === undefined || value === null ? '' : String(value); }

  global.alert = function (message, title, errorIcon) {
    ask('alert', {text: text(message), title: text(title), errorIcon: !!errorIcon});
  };
  global.confirm = function (message, noAsDefault, title) {
    return ask('confirm', {text: text(message), title: text(title), noAsDefault: !!noAsDefault});
  };

  global.$ = ask('environment', {});
  global.$.writeln = function () {};

  function native(path) {
    return $.os.indexOf('Windows') >= 0 ? path.replace(/\//g, '\\') : path;
  }
  function makePathClass(isFile) {
    function Path(path) {
      if (!(this instanceof Path)) return new Path(path);
      this.fsName = native(text(path));
      this.fullName = this.absoluteURI = text(path);
    }
    Object.defineProperty(Path.prototype, 'exists', {
      get: function () { return ask('exists', {path: this.fsName, file: isFile}); }
    });
    Object.defineProperty(Path.prototype, 'name', {
      get: function () { return this.fsName.replace(/^.*[\/\\]/, ''); }
    });
    Object.defineProperty(Path.prototype, 'parent', {
      get: function () { return new global.Folder(this.fsName.replace(/[\/\\][^\/\\]*$/, '')); }
    });
    Path.fs = /^Windows/.test($.os) ? 'Windows' : /^Mac/.test($.os) ? 'Macintosh' : 'Linux';
    Path.prototype.toString = function () { return this.fullName; };
    return Path;
  }
  global.File = makePathClass(true);
  global.Folder = makePathClass(false);
  global.File.openDialog = function (prompt, filter) {
    var path = ask('openFile', {text: text(prompt), filter: text(filter)});
    return path === null ? null : new global.File(path);
  };
  global.Folder.selectDialog = function (prompt) {
    var path = ask('selectFolder', {text: text(prompt)});
    return path === null ? null : new global.Folder(path);
  };

  global.system = {
    callSystem: function (command) { return ask('system', {command: text(command)}); }
  };
  global.app = {
    name: 'Headless host',
    executeCommand: function (id) { ask('command', {id: Number(id)}); },
    preferences: {
      getPrefAsLong: function (section, key) {
        return ask('preference', {section: text(section), key: text(key)});
      }
    }
  };
  global.Folder.userData = new global.Folder($.userData);

  // Windows: controls are plain objects; showing one draws it, records it and presses the buttons
  // that the user presses.
  function boundsOf(item) {
    var b = item.bounds, size = item.size || item.preferredSize;
    if (b && b.length === 4) return [b[0], b[1], b[2], b[3]];
    if (b && b.width !== undefined) return [b.x, b.y, b.x + b.width, b.y + b.height];
    if (size && size.length === 2) return [0, 0, size[0], size[1]];
    return [];
  }
  function Item(type, bounds, label) {
    this.type = type;
    if (bounds) this.bounds = bounds;
    this.text = text(label);
    this.children = [];
    this.listeners = {};
    this.layout = {layout: function () {}, resize: function () {}};
    this.graphics = new Graphics();
  }
  Item.prototype = {
    add: function (type, bounds, label, properties) {
      var child = new Item(text(type), bounds, label);
      if (properties && properties.name) this[properties.name] = child;
      if (label instanceof global.File) child.image = label;
      this.children.push(child);
      return child;
    },
    addEventListener: function (event, handler) {
      (this.listeners[event] = this.listeners[event] || []).push(handler);
    },
    notify: function (event) { fire(this, event || 'onClick'); },
    center: function () {},
    update: function () {},
    hide: function () {},
    close: function (value) { this.closed = true; this.result = value; },
    show: function () { return showWindow(this); }
  };
  function Graphics() { this.drawn = []; this.paint = [1, 1, 1, 1]; }
  Graphics.prototype = {
    newPen: function (type, color) { return {color: color}; },
    newBrush: function (type, color) { return {color: color}; },
    newPath: function () {},
    rectPath: function () {},
    fillPath: function () {},
    strokePath: function () {},
    drawOSControl: function () {},
    measureString: function (string) { return [8 * text(string).length, 16]; },
    drawString: function (string, pen, x, y, font) {
      font = font || this.font;
      this.drawn.push({kind: 'text', text: text(string), place: [x, y],
                       font: font ? font.family + ' ' + font.style + ' ' + font.size : '',
                       color: (pen || this.foregroundColor || {color: []}).color});
    },
    drawImage: function (image, x, y, width, height) {
      this.drawn.push({kind: 'image', text: text(image && image.pathname), font: '', color: [],
                       place: [x, y].concat(width === undefined ? [] : [width, height])});
    }
  };
  function fire(item, event) {
    if (typeof item[event] === 'function') item[event]({target: item});
  }
  function click(item) {
    fire(item, 'onClick');
    ['mousedown', 'mouseup', 'click'].forEach(function (event) {
      (item.listeners[event] || []).forEach(function (handler) {
        handler.call(item, {type: event, target: item, button: 0});
      });
    });
  }
  function everyItem(item, found) {
    item.children.forEach(function (child) { found.push(child); everyItem(child, found); });
    return found;
  }
  function isPicture(item) {
    return item.type !== 'button' &&
           (item.onClick || item.listeners.click || item.listeners.mousedown ||
            item.listeners.mouseup);
  }
  function showWindow(window) {
    fire(window, 'onShow');
    var items = everyItem(window, []), drawn = [];
    [window].concat(items).forEach(function (item) {
      if (typeof item.onDraw === 'function') item.onDraw({target: item});
      drawn = drawn.concat(item.graphics.drawn);
    });
    var presses = ask('window', {
      title: window.text, bounds: boundsOf(window), drawn: drawn,
      controls: items.map(function (item) {
        return {type: item.type, text: item.text, bounds: boundsOf(item)};
      })
    });
    presses.forEach(function (press) {
      if (window.closed) return;
      var pressed = items.filter(function (item) {
        return press === 'image' ? isPicture(item) : item.type === 'button' && item.text === press;
      })[0];
      if (!pressed) throw new Error('the window has no button "' + press + '"');
      click(pressed);
    });
    if (!window.closed) fire(window, 'onClose');
    return window.result;
  }
  global.Window = function (type, title, bounds) {
    return new Item(text(type), bounds, title);
  };
  global.ScriptUI = {
    newImage: function (file) {
      return {pathname: file instanceof global.File ? file.fsName : text(file), size: [0, 0]};
    },
    newFont: function (family, style, size) {
      return {family: text(family), style: text(style), size: Number(size)};
    },
    FontStyle: {REGULAR: 'Regular', BOLD: 'Bold', ITALIC: 'Italic', BOLDITALIC: 'BoldItalic'}
  };
  global.PenType = global.ScriptUI.PenType = {SOLID_COLOR: 'SOLID_COLOR', THEME_COLOR: 'THEME'};
  global.BrushType = global.ScriptUI.BrushType = global.PenType;
  Graphics.prototype.PenType = Graphics.prototype.BrushType = global.PenType;
})
)js";

}  // namespace vellumtide::headless
