// Kinds of payment in words.

const names = new Map([['cash', 'Наличные'], ['card', 'Банковская карта'], ['qr', 'QR-код']]);
const advices = new Map([['card', 'Приложите карту к терминалу']]);

/** What a buyer calls it; a kind that is not known as it is. */
export const paymentKind = (kind) => names.get(kind) ?? kind;

/** What a buyer is to do, if there is anything to say. */
export const paymentAdvice = (kind) => advices.get(kind) ?? '';
