const { register } = require('korvan/data-supplier');

const ranks = ['Ace', 'Two', 'Three', 'Four', 'Five', 'Six', 'Seven', 'Eight', 'Nine', 'Ten', 'Jack', 'Queen', 'King'];
const suits = ['Spades', 'Hearts', 'Diamonds', 'Clubs'];

const title = (index) => `${ranks[index % ranks.length]} of ${suits[Math.floor(index / ranks.length) % suits.length]}`;

function offerTitles() {
    register({ name: 'Card Titles', kind: 'text', supply: ({ layers }) => layers.map((layer, index) => title(index)) });
}
